// The items of a package's keys: read from the source store's inventory on
// export, found again in this store's on import, many at a time.
#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/zelDBSM_InventoryBulk.h"
#include "hotkeys/hkeyPackage_internal.h"

namespace setpackage {

namespace {

using Items = QHash<QString, InventoryBulkItem>;

QString key(const QString &code)
{
    return gfsInventory_BulkKey(code);
}

// The S/L as a key holds it, in the form the inventory stores.
QString storedSL(const QString &sl)
{
    return gfsSL_toStored(gfsSL_normalize(sl));
}

SourceItem sourceOf(const InventoryBulkItem &item)
{
    return {conv::Trim(gfsSL_toDisplay(item.sl)), item.itemId, {}, item.description};
}

// Codes that begin with "D" or "I" link departments or items, not a product.
bool productCode(const QString &code)
{
    return !code.isEmpty() && !QString("DI").contains(code.front());
}

void takeMatch(ItemKey &key, Match how, const QString &code, const InventoryBulkItem &item)
{
    const SourceItem mine = sourceOf(item);
    key.match = how;
    key.code = code;
    key.storeDescription = mine.description;
    // The key keeps its way of naming the item where this store's item has that code.
    const bool byId = key.idSelect == "Yes" && !mine.itemId.isEmpty();
    key.newItem = byId ? mine.itemId : mine.sl;
    key.newIdSelect = byId ? "Yes" : "No";
}

// The codes a key of another store gives for its item: the package's, or the
// key's own text standing in for the one the package does not give.
struct Wanted {
    QString sl, id;
};

Wanted wantedCodes(const ItemKey &key)
{
    const SourceItem &s = key.source;
    return {!s.sl.isEmpty()        ? s.sl
            : key.idSelect == "No" ? key.item
                                   : QString(),
            !s.itemId.isEmpty()     ? s.itemId
            : key.idSelect == "Yes" ? key.item
                                    : QString()};
}

bool findByUpc(ItemKey &k, const QHash<QString, QString> &itemOfCode, const Items &bySL)
{
    for (const QString &code : k.source.upc) {
        const auto sl = itemOfCode.constFind(key(code));
        if (sl == itemOfCode.constEnd())
            continue;
        if (const auto item = bySL.constFind(key(*sl)); item != bySL.constEnd()) {
            takeMatch(k, Match::ByUpc, code, *item);
            return true;
        }
    }
    return false;
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

bool readSourceItems(const QList<ItemName> &names, QList<std::optional<SourceItem>> &found)
{
    QStringList sls, ids;
    for (const ItemName &n : names) {
        if (n.idSelect == "No")
            sls << storedSL(n.item);
        else if (n.idSelect == "Yes")
            ids << n.item;
    }
    Items bySL, byId;
    if (!gfbInventory_ReadMany(sls, false, bySL) || !gfbInventory_ReadMany(ids, true, byId))
        return false;
    QStringList itemSLs;
    for (const Items *items : {&bySL, &byId}) {
        for (const InventoryBulkItem &item : *items) itemSLs << item.sl;
    }
    QHash<QString, QStringList> codes;
    if (!gfbUpc_CodesOfItems(itemSLs, codes))
        return false;
    found.clear();
    for (const ItemName &n : names) {
        const bool bySl = n.idSelect == "No";
        const Items &items = bySl ? bySL : byId;
        const auto item = items.constFind(key(bySl ? storedSL(n.item) : n.item));
        if (item == items.constEnd() || (!bySl && n.idSelect != "Yes")) {
            found << std::nullopt;
            continue;
        }
        SourceItem source = sourceOf(*item);
        for (const QString &code : codes.value(key(item->sl))) {
            if (productCode(code))
                source.upc << code;
        }
        found << source;
    }
    return true;
}

// Each code is asked for only for the keys that the codes before it left unmatched.
bool matchItems(QList<ItemKey> &keys)
{
    QList<ItemKey *> open;
    QStringList sls;
    for (ItemKey &k : keys) {
        k.match = Match::None;
        k.newItem = k.item;
        k.newIdSelect = k.idSelect;
        k.storeDescription.clear();
        open << &k;
        sls << storedSL(wantedCodes(k).sl);
    }
    Items bySL, byId;
    if (!gfbInventory_ReadMany(sls, false, bySL))
        return false;
    QStringList ids;
    open.removeIf([&](ItemKey *k) {
        const QString sl = wantedCodes(*k).sl;
        const auto item = bySL.constFind(key(storedSL(sl)));
        if (conv::Trim(sl).isEmpty() || item == bySL.constEnd()) {
            ids << wantedCodes(*k).id;
            return false;
        }
        takeMatch(*k, Match::BySL, sl, *item);
        return true;
    });
    if (!gfbInventory_ReadMany(ids, true, byId))
        return false;
    QStringList codes;
    open.removeIf([&](ItemKey *k) {
        const QString id = wantedCodes(*k).id;
        const auto item = byId.constFind(key(id));
        if (conv::Trim(id).isEmpty() || item == byId.constEnd()) {
            codes << k->source.upc;
            return false;
        }
        takeMatch(*k, Match::ById, id, *item);
        return true;
    });
    QHash<QString, QString> itemOfCode;
    if (!gfbUpc_ItemsOfCodes(codes, itemOfCode) ||
        !gfbInventory_ReadMany(itemOfCode.values(), false, bySL))
        return false;
    for (ItemKey *k : open) findByUpc(*k, itemOfCode, bySL);
    return true;
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
