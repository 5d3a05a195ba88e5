#pragma once
#include "hotkeys/hkeyPackage.h"

// What the parts of the set packages share among themselves.
namespace setpackage::detail {

inline constexpr const char *kManifest = "manifest.json";
inline constexpr const char *kSetFolder = "sets/";
inline constexpr const char *kPictureFolder = "pictures/";
inline constexpr const char *kSpecialFile = "SPECIAL.BDF";
inline constexpr const char *kCouponFile = "COUPON.BDF";

// An item as a key names it: its S/L ("No") or Item ID ("Yes").
struct ItemName {
    QString item, idSelect;
};
// What this store's inventory knows of the items the keys name, in their order,
// nothing where it has no such item. Inside a DbAction: false when the inventory
// could not be read.
bool readSourceItems(const QList<ItemName> &names, QList<std::optional<SourceItem>> &found);
// This store's item for each key of another store: by the S/L, then the Item ID,
// then each UPC code. The key's own text stands in for a code the package does
// not give. Inside a DbAction: false when the inventory could not be read.
bool matchItems(QList<ItemKey> &keys);
// A key that sells something: it has an item and no link.
bool sellsItem(const HotKeyButton &b);
// A picture name that stays inside the pictures folder.
bool plainFileName(const QString &name);

} // namespace setpackage::detail
