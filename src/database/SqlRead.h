#pragma once
#include <QString>
#include <QStringList>
#include <utility>

// A read as the engine runs it: its statement with a "?" for each value, and the
// values in order. The values are bound to the prepared statement, never written
// into it; the text the program shows and logs is made from both (sqlText).
struct SqlRead {
    SqlRead() = default;
    SqlRead(QString statement, QStringList boundValues = {})
        : shape(std::move(statement)), values(std::move(boundValues))
    {
    }
    QString shape;
    QStringList values;

    SqlRead &operator+=(const SqlRead &more)
    {
        shape += more.shape;
        values += more.values;
        return *this;
    }
};
inline SqlRead operator+(SqlRead a, const SqlRead &b)
{
    return a += b;
}
inline SqlRead operator+(SqlRead a, const QString &b)
{
    a.shape += b;
    return a;
}
inline SqlRead operator+(const QString &a, const SqlRead &b)
{
    return SqlRead(a) += b;
}

// One value where it stands.
inline SqlRead sqlValue(const QString &value)
{
    return {"?", {value}};
}
// The values one after the other, `separator` between them.
SqlRead sqlValueList(const QStringList &values, const QString &separator);

// A value as a statement's text holds it: every quote doubled (or, with
// `doubled` false, made a blank); a value holding a NUL is all blanks.
QString sqlValueText(const QString &value, bool doubled);
// The statement of a read as the program shows and logs it: each "?" its value,
// quoted, as sqlValueText writes it.
QString sqlText(const SqlRead &read);
// No stored text holds a NUL and not every engine takes one: such a value is
// bound as NULL, which no row equals or orders against, so it finds nothing.
inline bool sqlBindsAsNull(const QString &value)
{
    return value.contains(QChar(0));
}
