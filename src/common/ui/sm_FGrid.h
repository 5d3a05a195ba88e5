#pragma once

namespace platform {
class MSFlexGrid;
}

// Selects the whole row `lRow`.
void gpGrid_selectRow(platform::MSFlexGrid *oGrid, int lRow);
// Sum of the widths of all columns, in twips.
int glGrid_width(const platform::MSFlexGrid *oGrid);
// The last column from `iFrom` on that fits `lWidth`; a continued page repeats column 0.
int gvGrid_lastFitting(const platform::MSFlexGrid *oGrid, int lWidth, int iFrom);
