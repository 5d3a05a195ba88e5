#pragma once
#include <QString>

// Application state: lives from start to end of the process. It sits on the
// floor of the set files so that every screen and the lookup can reach it.
extern QString gsHotKeyPicturePath; // data folder + "/pictures/HotKeys/", with the separator
extern QString gsStoreNumber;
extern bool gbMultiStore;
extern qint16 giInventorySearch;
extern qint16 giNameSearch;
extern bool gbCouponKeys;
extern bool gbSpecialKeys;
extern qint16 giLinkOption; // 0 "Stock Locater", 1 "Item ID"
