#pragma once
#include <QString>
#include <QVariant>
#include <QVector>

// The kinds of fields of a record buffer.
enum class FieldKind { Text, Int16, Int32, Single, Currency, None };

// One column of a table: its name, its part of the CREATE TABLE statement and
// the field that holds it in the record (a text field's width in characters).
struct ColumnSpec {
    QString name;
    QString definition;
    FieldKind kind = FieldKind::Text;
    int width = 0;
};

// A table's record buffer: one field per column, in column order. Text fields
// are fixed width, padded with blanks on the right; numbers are 16- or 32-bit
// integers, singles, or currency values of four decimals.
class TableRecord {
public:
    explicit TableRecord(QVector<ColumnSpec> columns);

    const QVector<ColumnSpec> &columns() const { return m_columns; }
    int indexOf(const QString &name) const;

    QString text(const QString &name) const;
    // Left-justified assignment: pads or cuts to the field's width.
    void setText(const QString &name, const QString &value);
    double number(const QString &name) const;
    void setNumber(const QString &name, double value);
    QVariant value(int column) const { return m_values.value(column); }
    // A value converted to the field's kind, as the runtime's assignment does.
    void assign(int column, const QVariant &value);

    // Text blank, numbers 0.
    void clear();

    // The table module routines that every table shares.
    void fromRow(qint16 iFile);
    void toRow(qint16 iFile);
    QString insertValues();
    QString createStatement(const QString &table, const QString &separator = ", ") const;

private:
    QVector<ColumnSpec> m_columns;
    QVector<QVariant> m_values;
};
