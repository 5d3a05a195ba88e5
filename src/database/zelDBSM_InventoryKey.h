#pragma once
#include <QString>

// Reads the item that a hot key sells into gInventoryRecord, as the sales screen
// finds it: by S/L when `sIdSelect` is "No", by Item ID when "Yes". False when
// the inventory has no such item, or the key says neither.
bool gfbInventory_ByHotKey(const QString &sItem, const QString &sIdSelect);
