#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include <QRegularExpression>

namespace dbsm {

namespace {

SqlRead term(const QString &key, const QString &op, const QString &value)
{
    return {key + op + '?', {value}};
}

QString orderBy(const QStringList &keys, bool descending)
{
    QStringList parts;
    for (const QString &k : keys) parts << (descending ? k + " DESC" : k);
    return " ORDER BY " + parts.join(',');
}

} // namespace

SqlRead comparison(const QString &table, const QStringList &keys, const QStringList &values,
                   const QString &op)
{
    SqlRead s("SELECT TOP 1 * FROM " + table + " WHERE ");
    for (int i = 0; i < keys.size(); ++i)
        s += (i > 0 ? " AND " : "") + term(keys[i], op, values.value(i));
    if (!keys.isEmpty())
        s.shape += " ORDER BY " + keys.first();
    return s;
}

SqlRead rowComparison(const QString &table, const QString &column, const QString &value,
                      const QString &op)
{
    SqlRead s = "SELECT TOP 1 * FROM " + table + " WHERE " + term(column, op, value);
    if (op.startsWith('<'))
        s.shape += " ORDER BY " + column + " DESC";
    return s;
}

QString getFirst(const QString &table, const QStringList &keys, bool noKey)
{
    QString s = "SELECT TOP 1 * FROM " + table;
    if (!noKey && !keys.isEmpty())
        s += orderBy(keys.mid(0, 5), false);
    return s;
}

QString getLast(const QString &table, const QStringList &keys, bool noKey,
                const QString &firstColumn)
{
    const QString s = "SELECT TOP 1 * FROM " + table;
    if (noKey)
        return s + " ORDER BY " + firstColumn + " DESC";
    return keys.isEmpty() ? s : s + orderBy(keys.mid(0, 5), true);
}

SqlRead getNext(const QString &table, const QStringList &keys, const QStringList &values,
                bool previous)
{
    const QString gt = previous ? "<" : ">", ge = previous ? "<=" : ">=";
    const int n = static_cast<int>(keys.size());
    auto K = [&keys](int i) { return keys[i - 1]; };
    auto V = [&values](int i) { return values.value(i - 1); };
    SqlRead where;
    if (n <= 1) {
        where = term(K(1), gt, V(1));
    } else {
        where = "(SELECT COUNT(*) FROM " + table + " WHERE " + term(K(1), "=", V(1)) +
                ") > 1 AND " + term(K(1), "=", V(1));
        if (n == 2) {
            where += " AND " + term(K(2), gt, V(2));
        } else if (n == 3) {
            where += " AND " + term(K(2), "=", V(2)) + " AND " + term(K(3), gt + ' ', V(3)) +
                     " OR " + term(K(1), "=", V(1)) + " AND " + term(K(2), gt + ' ', V(2));
        } else {
            for (int i = 2; i < n; ++i) where += " AND " + term(K(i), ge, V(i));
            where += " AND " + term(K(n), gt, V(n));
        }
        where += " OR " + term(K(1), gt, V(1));
    }
    return "SELECT  TOP 1 * FROM " + table + " WHERE " + where + orderBy(keys, previous);
}

SqlRead trimItemId(SqlRead read)
{
    read.shape = sqlOutsideLiterals(read.shape, [](const QString &sql) {
        static const QRegularExpression word("\\bItemID\\b");
        return QString(sql).replace(word, "ltrim(ItemID)");
    });
    return read;
}

} // namespace dbsm
