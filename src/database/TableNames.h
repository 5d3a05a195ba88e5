#pragma once
#include <QtGlobal>

// The tables the program registers, by their place in the table list.
enum DbTable : qint16 { tblCommon = 0, tblInventory = 1, tblUpc = 2 };

// The inventory's keys, named by their segments (the last segment of a key that
// could repeat makes it unique).
enum InventoryKey : qint16 {
    invKeyRecordNum = 0,
    invKeySL = 1,
    invKeyItemID = 2,
    invKeyDescription = 3,    // Description, SL
    invKeySubDescription = 4, // SubDescription, SL
    invKeyVendorDescription = 5,
    invKeyVendorSL = 6,
    invKeyVendorItemID = 7,
    invKeyDeptItemID = 8,
    invKeyClassDescription = 9,
    invKeyLocBack = 10, // LocBack, RecordNum
    invKeyLocFront = 11,
    invKeyPoll = 12,
};

// The UPC table's keys.
enum UpcKey : qint16 {
    upcKeySL = 0,
    upcKeySLCode = 1, // SL, UPC
    upcKeyCode = 2,   // UPC
    upcKeyPoll = 3,
    upcKeyInvUID = 4,
};
