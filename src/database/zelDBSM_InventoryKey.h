#pragma once
#include <QList>
#include <QString>
#include <utility>

// Reads the item that a hot key sells into gInventoryRecord, as the sales screen
// finds it: by S/L when `sIdSelect` is "No", by Item ID when "Yes". False when
// the inventory has no such item, or the key says neither.
bool gfbInventory_ByHotKey(const QString &sItem, const QString &sIdSelect);

// The status of many items in one statement: `values` are S/Ls in stored form, or
// Item IDs with `bById`, compared as the reads by key compare them (case and
// blanks around an Item ID ignored). Each item found adds its S/L or Item ID and
// its Status to `rows`. Call it inside a DbAction: false when the database could
// not be read, which the action tells.
bool gfbInventory_Statuses(const QStringList &values, bool bById,
                           QList<std::pair<QString, QString>> &rows);
