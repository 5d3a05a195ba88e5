#include "database/TableRecord.h"
#include "database/ZelDBSM_MSDE.h"
#include <cmath>
#include <limits>

TableRecord::TableRecord(QVector<ColumnSpec> columns) : m_columns(std::move(columns))
{
    m_values.resize(m_columns.size());
    clear();
}

int TableRecord::indexOf(const QString &name) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (!m_columns[i].name.compare(name, Qt::CaseInsensitive))
            return i;
    }
    return -1;
}

QString TableRecord::text(const QString &name) const
{
    return m_values.value(indexOf(name)).toString();
}

void TableRecord::setText(const QString &name, const QString &value)
{
    assign(indexOf(name), value);
}

double TableRecord::number(const QString &name) const
{
    return m_values.value(indexOf(name)).toDouble();
}

void TableRecord::setNumber(const QString &name, double value)
{
    assign(indexOf(name), value);
}

namespace {

template <class T> T clamped(double v)
{
    if (!std::isfinite(v))
        return 0;
    const double r = std::nearbyint(v);
    return static_cast<T>(std::clamp(r, double(std::numeric_limits<T>::min()),
                                     double(std::numeric_limits<T>::max())));
}

} // namespace

// NULL and values that do not fit read as blank or 0, so a row written by another
// program never stops a read; numbers beyond a field's range stop at its limit.
void TableRecord::assign(int column, const QVariant &value)
{
    if (column < 0 || column >= m_columns.size())
        return;
    const ColumnSpec &c = m_columns[column];
    const double v = value.isNull() ? 0 : value.toString().trimmed().toDouble();
    switch (c.kind) {
    case FieldKind::Text:
        m_values[column] = value.toString().leftJustified(c.width, ' ', true);
        break;
    case FieldKind::Int16:
        m_values[column] = clamped<qint16>(v);
        break;
    case FieldKind::Int32:
        m_values[column] = clamped<qint32>(v);
        break;
    case FieldKind::Single:
        m_values[column] = static_cast<double>(static_cast<float>(v));
        break;
    case FieldKind::Currency:
        m_values[column] = std::round(v * 10000) / 10000;
        break;
    case FieldKind::None:
        break;
    }
}

void TableRecord::clear()
{
    for (int i = 0; i < m_columns.size(); ++i)
        m_values[i] = m_columns[i].kind == FieldKind::Text
                          ? QVariant(QString(m_columns[i].width, ' '))
                      : m_columns[i].kind == FieldKind::None ? QVariant()
                                                             : QVariant(0);
}

void TableRecord::fromRow(qint16 iFile)
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].kind != FieldKind::None)
            assign(i, gfvDBSM_Field(iFile, i));
    }
}

void TableRecord::toRow(qint16 iFile)
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].kind == FieldKind::None)
            continue;
        gpDBSM_SetField(iFile, i, m_values[i]);
        if (m_columns[i].kind == FieldKind::Text)
            assign(i, gfvDBSM_Field(iFile, i));
    }
}

QString TableRecord::insertValues()
{
    QStringList list;
    for (int i = 0; i < m_columns.size(); ++i) {
        switch (m_columns[i].kind) {
        case FieldKind::Text:
            // A quote becomes a blank in the record itself, as the suite stores it.
            m_values[i] = gfsDBSM_SqlText(m_values[i], false);
            list << '\'' + m_values[i].toString() + '\'';
            break;
        case FieldKind::None:
            list << "' '";
            break;
        case FieldKind::Currency:
            list << QString::number(m_values[i].toDouble(), 'f', 4);
            break;
        case FieldKind::Single:
            list << QString::number(m_values[i].toDouble(), 'g', 9);
            break;
        default:
            list << QString::number(m_values[i].toLongLong());
            break;
        }
    }
    return list.join(',');
}

QString TableRecord::createStatement(const QString &table, const QString &separator) const
{
    QStringList parts;
    for (const ColumnSpec &c : m_columns) parts << c.name + ' ' + c.definition;
    return "Create Table " + table + " (" + parts.join(separator) + ");";
}
