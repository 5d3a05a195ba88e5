#pragma once
#include <QList>
#include <QString>
#include <QStringList>

// The keys of other sets that open a set: what its removal takes out, and how a
// restore of the removed set from Versions puts them back.

// Keys of one set file that open the set, as a removal counts them.
struct LinkingKeys {
    QString fileName;
    int keys = 0;
};
QList<LinkingKeys> hotKeySetLinkingKeys(const QString &sSetNumber);
// "3 keys in 2 other sets (sets 02, 05)", the numbers only when few.
QString hotKeySetLinkingText(const QList<LinkingKeys> &linking);

// A key line that the removal of a set took out of another set, with its column.
struct ClearedKey {
    QString fileName;
    int group = 0;
    int key = 0;
    QString line;
};
// The keys that the removal of `setFileName` cleared, each from the version of its
// set kept just before that repair; only keys whose place is still empty now.
QList<ClearedKey> hotKeySetClearedKeys(const QString &setFileName);
// Puts the keys back where their place is still empty; the number put back. Each
// rewritten set is kept in Versions first; `problems` names the files that stood in the way.
int hotKeySetClearedKeys_restore(const QList<ClearedKey> &keys, QStringList *problems);
