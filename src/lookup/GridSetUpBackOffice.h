#pragma once
#include "lookup/model/InventoryLookup.h"

class frm_Lookup;

// Lays out the lookup's columns and takes the sort of the settings; the form,
// when given, shows the sort's captions.
bool gfbInventoryLookup_setup(frm_Lookup *form = nullptr);
