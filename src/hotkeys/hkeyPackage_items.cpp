// The items of a package's keys: read from the source store's inventory on
// export, found again in this store's on import.
#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_InventoryKey.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyPackage_internal.h"

namespace setpackage {

namespace {

constexpr qint16 kInventory = 1, kUpc = 2;
constexpr qint16 kUpcBySL = 0, kUpcByCode = 2, kInventoryBySL = 1;

bool read(qint16 file, qint16 op, qint16 key)
{
    QString sql;
    return gfbDBSM_Record(file, op, key, false, false, sql);
}

bool readByStoredSL(const QString &stored)
{
    gInventoryRecord.setText("SL", stored);
    return read(kInventory, opEqual, kInventoryBySL);
}

// The bar codes of the item in the record. Codes that begin with "D" or "I" link
// departments or items, not a product.
QStringList upcCodes(const QString &stored)
{
    QStringList codes;
    gUpcRecord.setText("SL", stored);
    for (bool found = read(kUpc, opEqual, kUpcBySL); found && gUpcRecord.text("SL") == stored;
         found = read(kUpc, opNext, kUpcBySL)) {
        const QString code = conv::Trim(gUpcRecord.text("UPC"));
        if (!code.isEmpty() && !QString("DI").contains(code.front()))
            codes << code;
    }
    return codes;
}

SourceItem recordItem()
{
    return {conv::Trim(gfsSL_toDisplay(gInventoryRecord.text("SL"))),
            conv::Trim(gInventoryRecord.text("ItemID")),
            {},
            conv::Trim(gInventoryRecord.text("Description"))};
}

void takeMatch(ItemKey &key, Match how, const QString &code)
{
    const SourceItem mine = recordItem();
    key.match = how;
    key.code = code;
    key.storeDescription = mine.description;
    // The key keeps its way of naming the item where this store's item has that code.
    const bool byId = key.idSelect == "Yes" && !mine.itemId.isEmpty();
    key.newItem = byId ? mine.itemId : mine.sl;
    key.newIdSelect = byId ? "Yes" : "No";
}

} // namespace

QString matchText(Match m)
{
    switch (m) {
    case Match::BySL:
        return "S/L";
    case Match::ById:
        return "Item ID";
    case Match::ByUpc:
        return "UPC";
    case Match::None:
        break;
    }
    return "not found";
}

namespace detail {

bool readSourceItem(const QString &item, const QString &idSelect, SourceItem &found)
{
    if (!gfbInventory_ByHotKey(item, idSelect))
        return false;
    found = recordItem();
    found.upc = upcCodes(gInventoryRecord.text("SL"));
    return true;
}

void matchItem(ItemKey &key)
{
    const SourceItem &s = key.source;
    const QString sl = !s.sl.isEmpty() ? s.sl : key.idSelect == "No" ? key.item : QString();
    const QString id = !s.itemId.isEmpty()     ? s.itemId
                       : key.idSelect == "Yes" ? key.item
                                               : QString();
    key.match = Match::None;
    key.newItem = key.item;
    key.newIdSelect = key.idSelect;
    key.storeDescription.clear();
    if (!conv::Trim(sl).isEmpty() && gfbInventory_ByHotKey(sl, "No"))
        return takeMatch(key, Match::BySL, sl);
    if (!conv::Trim(id).isEmpty() && gfbInventory_ByHotKey(id, "Yes"))
        return takeMatch(key, Match::ById, id);
    for (const QString &code : s.upc) {
        gUpcRecord.setText("UPC", code);
        if (read(kUpc, opEqual, kUpcByCode) && readByStoredSL(gUpcRecord.text("SL")))
            return takeMatch(key, Match::ByUpc, code);
    }
}

bool sellsItem(const HotKeyButton &b)
{
    return b.LinkSet.isEmpty() && !b.Item.isEmpty();
}

bool plainFileName(const QString &name)
{
    return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') &&
           !name.contains('\\') && !name.contains(':');
}

} // namespace detail

} // namespace setpackage
