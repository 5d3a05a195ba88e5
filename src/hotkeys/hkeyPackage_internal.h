#pragma once
#include "hotkeys/hkeyPackage.h"

// What the parts of the set packages share among themselves.
namespace setpackage::detail {

inline constexpr const char *kManifest = "manifest.json";
inline constexpr const char *kSetFolder = "sets/";
inline constexpr const char *kPictureFolder = "pictures/";
inline constexpr const char *kSpecialFile = "SPECIAL.BDF";
inline constexpr const char *kCouponFile = "COUPON.BDF";

// What this store's inventory knows of the item a key sells; false when it has no such item.
bool readSourceItem(const QString &item, const QString &idSelect, SourceItem &found);
// This store's item for a key of another store: by the S/L, then the Item ID, then
// each UPC code. The key's own text stands in for a code the package does not give.
void matchItem(ItemKey &key);
// A key that sells something: it has an item and no link.
bool sellsItem(const HotKeyButton &b);
// A picture name that stays inside the pictures folder.
bool plainFileName(const QString &name);

} // namespace setpackage::detail
