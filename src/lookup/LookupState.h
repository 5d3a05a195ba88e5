#pragma once
#include "lookup/model/InventoryLookup.h"

// Names of the lookup's state that the tools and other rooms' tests still use;
// each is gLookup's member of that name, not a second copy.
inline QString &gsLookupCode = gLookup.gsLookupCode;
inline QString &gsSearchValue = gLookup.gsSearchValue;
inline qint16 &giGridRows = gLookup.giGridRows;
inline qint16 &giSavedRow = gLookup.giSavedRow;
inline bool &gbWildcard = gLookup.gbWildcard;
inline QVector<TableRecord> &gInventoryMatches = gLookup.gInventoryMatches;
