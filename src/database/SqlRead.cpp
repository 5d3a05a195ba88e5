#include "database/SqlRead.h"

SqlRead sqlValueList(const QStringList &values, const QString &separator)
{
    QStringList marks(values.size(), QStringLiteral("?"));
    return {marks.join(separator), values};
}

QString sqlValueText(const QString &value, bool doubled)
{
    if (value.contains(QChar(0)))
        return QString(value.size(), ' ');
    return QString(value).replace('\'', doubled ? QStringLiteral("''") : QStringLiteral(" "));
}

QString sqlText(const SqlRead &read)
{
    const QString &shape = read.shape;
    QString text;
    text.reserve(shape.size() + 32 * read.values.size());
    qsizetype from = 0, next = 0;
    bool inValue = false;
    for (qsizetype i = 0; i < shape.size(); ++i) {
        if (shape[i] == '\'')
            inValue = !inValue;
        else if (shape[i] == '?' && !inValue && next < read.values.size()) {
            text += QStringView(shape).mid(from, i - from);
            text += '\'';
            text += sqlValueText(read.values[next++], true);
            text += '\'';
            from = i + 1;
        }
    }
    text += QStringView(shape).mid(from);
    return text;
}
