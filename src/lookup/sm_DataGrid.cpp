#include "lookup/sm_DataGrid.h"
#include "database/ZelDBSM_MSDE.h"
#include "lookup/frm_Lookup.h"
#include "platform/Dialogs.h"
#include "platform/ui/MSFlexGrid.h"
#include "platform/ui/Twips.h"
#include <QHeaderView>

void gpGrid_setup(platform::MSFlexGrid *grid)
{
    const LookupPage page = gLookup.prepare();
    const qint16 cols = gLookup.giGridCols;
    grid->Clear();
    grid->setFixedRows(1);
    grid->setCols(cols);
    grid->setRows(gLookup.giPageRows + 1);
    grid->setWordWrap(true);
    grid->horizontalHeader()->setFixedHeight(platform::twipsToPixels(700));
    for (int c = 0; c < cols; ++c) {
        const LookupColumn &col = gLookup.gLookupColumns[c];
        grid->setColWidth(c, col.lWidth);
        grid->setColAlignment(c, col.iAlignment == 7   ? Qt::AlignRight
                                 : col.iAlignment == 4 ? Qt::AlignHCenter
                                                       : Qt::AlignLeft);
        grid->setTextMatrix(0, c, col.sCaption);
        if (QTableWidgetItem *h = grid->horizontalHeaderItem(c))
            h->setTextAlignment(Qt::AlignCenter);
    }
    grid->setRow(1);
    grid->setCol(0);
    gpLookup_tell(page);
}

void gpGrid_show(platform::MSFlexGrid *grid, const LookupPage &page)
{
    const int rows = static_cast<int>(page.rows.size()) - 1;
    if (rows > 0 && grid->Rows() != rows)
        grid->setRows(rows);
    for (int r = 1; r < rows; ++r) {
        for (int c = 0; c < gLookup.giGridCols; ++c) {
            const QString text = page.rows[r].value(c);
            if (grid->TextMatrix(r, c) != text)
                grid->setTextMatrix(r, c, text);
        }
    }
    grid->setRow(page.cursor);
    grid->setCol(gLookup.giSelectColumn);
    grid->setColSel(gLookup.giGridCols - 1);
    gpLookup_tell(page);
}

void gpLookup_tell(const LookupPage &page)
{
    for (const LookupMessage &m : page.messages)
        platform::MsgBox(m.text, platform::vbOKOnly, m.title);
}

bool gfbGrid_load(platform::MSFlexGrid *grid)
{
    const DbAction action;
    const LookupPage page = gLookup.load();
    gpGrid_show(grid, page);
    return page.ok;
}

void gpGrid_scroll(platform::MSFlexGrid *grid, int iDirection, frm_Lookup *form)
{
    const DbAction action; // its box comes after the page is painted
    gpGrid_show(grid, gLookup.move(iDirection));
    if (form)
        form->focusSearchBox();
}

bool gfbGrid_search(platform::MSFlexGrid *grid, frm_Lookup *)
{
    const DbAction action;
    const LookupPage page = gLookup.search(gLookup.gsSearchValue);
    gpGrid_show(grid, page);
    return page.ok;
}

void gpGrid_wildcard(platform::MSFlexGrid *grid, frm_Lookup *)
{
    const DbAction action;
    gpGrid_show(grid, gLookup.wildcard(gLookup.gsSearchValue));
}
