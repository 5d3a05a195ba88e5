#pragma once
#include <QHash>
#include <QString>
#include <QStringList>

// Reads of many items at once, for work over a whole store of sets: one statement
// for each batch of codes instead of one keyed read for each code. Codes compare
// as the keyed reads compare them (case and trailing blanks ignored, and blanks
// before an Item ID), so what a read finds is filed under gfsInventory_BulkKey of
// the code asked for. Call them inside a DbAction: false when the database could
// not be read, which the action tells.

struct InventoryBulkItem {
    QString sl; // stored form
    QString itemId, description;
};

// The key under which a bulk read files what it found for `code`.
QString gfsInventory_BulkKey(const QString &code);

// The items whose stored S/L is among `codes`, or with `bById` whose Item ID is.
bool gfbInventory_ReadMany(const QStringList &codes, bool bById,
                           QHash<QString, InventoryBulkItem> &found);
// The bar codes of the items of these stored S/Ls, each item's in the order of the codes.
bool gfbUpc_CodesOfItems(const QStringList &sls, QHash<QString, QStringList> &codes);
// The stored S/L of the item of each bar code found.
bool gfbUpc_ItemsOfCodes(const QStringList &codes, QHash<QString, QString> &sls);
