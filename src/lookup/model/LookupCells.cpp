#include "common/Conversions.h"
#include "common/sm_Text.h"
#include "common/zelFormats.h"
#include "database/TableNames.h"
#include "lookup/model/LookupInternal.h"
#include <QHash>

using lookup_detail::read;

namespace {

QString money(const QString &text)
{
    QString s = conv::Trim(text);
    if (s.contains('$'))
        s = s.mid(s.indexOf('$') + 1);
    double v = conv::Val(s);
    if (s.endsWith(')'))
        v = -v;
    return conv::Format(v, "##.00");
}

} // namespace

QVariant InventoryLookup::fieldValue(int field) const
{
    return mSource ? mSource->value(field) : gfvDBSM_Field(tblInventory, field);
}

QString InventoryLookup::upcCell(const QString &sl) const
{
    if (gUpcRecord.text("SL") == sl) // the row of the bar code order
        return conv::Trim(gUpcRecord.text("UPC"));
    gUpcRecord.setText("SL", sl);
    bool found = read(tblUpc, opEqual, upcKeySL);
    // Values that begin with "D" or "I" link departments or items and do not show.
    while (found && QString("DI").contains(gUpcRecord.text("UPC").left(1))) {
        found = read(tblUpc, opNext, upcKeySL) && gUpcRecord.text("SL") == sl;
    }
    return found ? conv::Trim(gUpcRecord.text("UPC")) : QString();
}

QString InventoryLookup::cellText(int row, int column, QString &sl)
{
    const LookupColumn &c = gLookupColumns[column];
    const QString text = fieldValue(c.iField).toString();
    switch (c.iFormat) {
    case 2:
    case 7:
        return money(text);
    case 3:
        return text; // dates: no column of the inventory layout has one
    case 4:
        sl = text.leftJustified(8, ' ', true);
        return gfsSL_toDisplay(sl);
    case 6: {
        static const int slField = gfiInventoryField("SL");
        const QString key = sl.isEmpty() ? fieldValue(slField).toString() : sl;
        if (gbUpcSort)
            return upcCell(key);
        // The page's bar codes are read together once its rows are there.
        gsPageCells[row][giGridCols] = key;
        return QString();
    }
    case 12:
        return " ";
    default: {
        bool number = false;
        const double v = text.trimmed().toDouble(&number);
        if (column != colItemID + giSelectColumn && number && text.contains('.'))
            return QString::number(gfdNumber_round(v, 4));
        return conv::Trim(text);
    }
    }
}

void InventoryLookup::fillRow(int iRow)
{
    if (gbStopSearch || iRow < 1 || iRow >= gsPageCells.size())
        return;
    QString sl;
    for (int c = giSelectColumn; c < giGridCols; ++c) gsPageCells[iRow][c] = cellText(iRow, c, sl);
}

void InventoryLookup::clearRow(int iRow)
{
    if (iRow < 1 || iRow >= gsPageCells.size())
        return;
    for (int c = 0; c <= giGridCols; ++c) gsPageCells[iRow][c].clear();
}

void InventoryLookup::shiftUp()
{
    for (int r = 1; r < giPageRows - 1; ++r) gsPageCells[r] = gsPageCells[r + 1];
    gsPageCells[giPageRows - 1] = QStringList(giGridCols + 1);
}

void InventoryLookup::shiftDown()
{
    for (int r = giPageRows - 1; r > 1; --r) gsPageCells[r] = gsPageCells[r - 1];
    gsPageCells[1] = QStringList(giGridCols + 1);
}

void InventoryLookup::readBarCodes()
{
    const int column = colUPC + giSelectColumn;
    QStringList sls;
    for (const QStringList &row : std::as_const(gsPageCells))
        if (!row.value(giGridCols).isEmpty())
            sls << row[giGridCols];
    if (sls.isEmpty())
        return;
    QHash<QString, QString> barCodes;
    gfbUpc_BarCodes(sls, barCodes);
    for (QStringList &row : gsPageCells) {
        if (row.value(giGridCols).isEmpty())
            continue;
        row[column] = barCodes.value(row[giGridCols]);
        row[giGridCols].clear();
    }
}
