#include "print/sm_Print_FlexGrid.h"
#include "common/Conversions.h"
#include "platform/ui/MSFlexGrid.h"
#include "print/PageDocument.h"
#include "print/frmSMPRNT_PREVIEW.h"
#include "print/sm_Print.h"
#include <QCoreApplication>
#include <QHeaderView>

namespace {

const QString sRowEnd = "\n";

// The sign of the heading's alignment: the legacy values 0-2 left, 3-5 centre, 6-8 right.
QString mfsAlignSign(const platform::MSFlexGrid &oGrid, int col)
{
    const QTableWidgetItem *head = oGrid.horizontalHeaderItem(col);
    const Qt::Alignment a =
        head ? Qt::Alignment(head->textAlignment()) : oGrid.horizontalHeader()->defaultAlignment();
    if (a & Qt::AlignHCenter)
        return "^";
    if (a & Qt::AlignRight)
        return ">";
    return "<";
}

// A row squeezed to height 0 is as hidden on the screen as a hidden one.
bool mfbRowHidden(const platform::MSFlexGrid &oGrid, int row)
{
    const int r = row - oGrid.FixedRows();
    return r >= 0 && (oGrid.isRowHidden(r) || oGrid.rowHeight(r) <= 0);
}

long mflGrid_width(const platform::MSFlexGrid &oGrid)
{
    long t = 0;
    for (int c = 0; c < oGrid.Cols(); ++c) t += oGrid.ColWidth(c);
    return t;
}

QString mfsTableFormat(const platform::MSFlexGrid &oGrid, long w)
{
    const long t = mflGrid_width(oGrid);
    QStringList entries;
    for (int c = 0; c < oGrid.Cols(); ++c) {
        if (oGrid.ColWidth(c) <= 0)
            continue;
        long width = t > 0 ? long(double(oGrid.ColWidth(c)) * w / t) : 0;
        if (c == 0 && t <= w)
            width = oGrid.ColWidth(c);
        entries << mfsAlignSign(oGrid, c) + QString::number(width);
    }
    return entries.join("|") + sRowEnd;
}

// The trimmed texts of the visible columns of a row, "|" between them.
QString mfsRow_text(const platform::MSFlexGrid &oGrid, int row)
{
    QStringList cells;
    for (int c = 0; c < oGrid.Cols(); ++c) {
        if (oGrid.ColWidth(c) <= 0)
            continue;
        cells << conv::Trim(oGrid.TextMatrix(row, c));
        QCoreApplication::processEvents();
    }
    return cells.join("|");
}

} // namespace

void gpPrint_FlexGrid(platform::MSFlexGrid &oGrid)
{
    frmSMPRNT_PREVIEW frm;
    frm.ModalMode = 1;
    print::PageDocument &doc = *frm.vsvPrinter;
    doc.setPreview(true);
    doc.setHdrFontSize(9);
    doc.setOrientation(print::orPortrait);
    if (mflGrid_width(oGrid) > gflPrint_PageWidth(doc))
        doc.setOrientation(print::orLandscape);
    doc.setHeader(gfsPrint_Header());
    doc.setFooter(gfsPrint_Footer());
    doc.setTableSeparators("|" + sRowEnd);
    doc.setTableBorder(print::tbAll);
    QString sText = mfsRow_text(oGrid, 0) + sRowEnd;
    doc.StartDoc();
    const QString sTableFormat = mfsTableFormat(oGrid, gflPrint_PageWidth(doc));
    doc.setFontBold(true);
    doc.setFontSize(10);
    // A hidden row adds no table, not even an empty one: that would print as a
    // blank row with its lines.
    for (int row = oGrid.FixedRows(); row < oGrid.Rows(); ++row) {
        if (mfbRowHidden(oGrid, row))
            continue;
        doc.AddTable(sTableFormat, sText);
        doc.setFontBold(false);
        sText = mfsRow_text(oGrid, row);
        if (row < oGrid.Rows() - 1)
            sText += sRowEnd;
    }
    doc.AddTable(sTableFormat, sText);
    doc.EndDoc();
}
