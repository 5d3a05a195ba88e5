#pragma once
#include "lookup/model/InventoryLookup.h"

class frm_Lookup;
namespace platform {
class MSFlexGrid;
}

// The lookup's columns on the grid, and an empty page.
void gpGrid_setup(platform::MSFlexGrid *grid);
// Paints the page on the grid, then shows its boxes.
void gpGrid_show(platform::MSFlexGrid *grid, const LookupPage &page);
// Shows the boxes of an operation that paints nothing.
void gpLookup_tell(const LookupPage &page);

// The lookup's operations as one user action each, painted on the grid.
bool gfbGrid_load(platform::MSFlexGrid *grid);
void gpGrid_scroll(platform::MSFlexGrid *grid, int iDirection, frm_Lookup *form = nullptr);
bool gfbGrid_search(platform::MSFlexGrid *grid, frm_Lookup *form = nullptr);
void gpGrid_wildcard(platform::MSFlexGrid *grid, frm_Lookup *form = nullptr);
