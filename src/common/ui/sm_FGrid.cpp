#include "common/ui/sm_FGrid.h"
#include "platform/ui/MSFlexGrid.h"

void gpGrid_selectRow(platform::MSFlexGrid *oGrid, int lRow)
{
    oGrid->setRow(lRow);
    oGrid->setCol(oGrid->FixedCols());
    oGrid->setColSel(oGrid->Cols() - 1);
}

int glGrid_width(const platform::MSFlexGrid *oGrid)
{
    int width = 0;
    for (int c = 0; c < oGrid->Cols(); ++c) width += oGrid->ColWidth(c);
    return width;
}

int gvGrid_lastFitting(const platform::MSFlexGrid *oGrid, int lWidth, int iFrom)
{
    int sum = iFrom > 0 ? oGrid->ColWidth(0) : 0;
    for (int c = iFrom; c < oGrid->Cols(); ++c) {
        sum += oGrid->ColWidth(c);
        if (sum > lWidth)
            return c - 1;
    }
    return oGrid->Cols() - 1;
}
