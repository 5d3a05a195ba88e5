#pragma once
#include <QString>
#include <QVariant>
#include <QVector>

struct TermDefinition {
    QString Default;
    QString Defined; // a site's own text; blank means the default stands
};

// Entry 0 stays empty; the terms lie from entry 1 on.
extern QVector<TermDefinition> gTermDefinitions;

enum TermConstant { termBusiness = 50, termFirstName = 93, termLastName = 94 };

// A term by number or by its default text; `iCase` 1 upper-cases, 2 lower-cases.
QString gfsTerm(const QVariant &vTerm, int iCase);
