#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>

struct HotKeyButton {
    QString Caption;
    QString Item;
    QString LinkSet;
    QString Root;
    QString IdSelect;
    QString Icon;
    bool operator==(const HotKeyButton &) const = default;
};

struct HotKeyGroup {
    QString Caption;
    qint32 Color = 0;
    std::array<HotKeyButton, 9> Buttons; // 1 to 8, top to bottom; 0 unused
    bool operator==(const HotKeyGroup &) const = default;
};

// The one set in memory: groups 1 to 4 are the columns, 0 is unused.
using HotKeySet = std::array<HotKeyGroup, 5>;
extern HotKeySet gHotKeyGroups;

// The platform's button face colour, written as "*Default".
inline constexpr qint32 kButtonFaceColor = static_cast<qint32>(0x8000000F);
// Silver: what every unknown colour name reads as.
inline constexpr qint32 kSilverColor = 0xC0C0C0;

// "HKSET07.SDF" and the like, in the data folder.
QString hotKeySetPath(const QString &sFileNumber);

void gpHotKeySet_clear();
void hotKeySetClear(HotKeySet &groups);
// Loads a set on top of the record and returns its title; empty when the file is
// missing (after saying so) or has no title.
QString gfsHotKeySet_read(const QString &sSetNumber);
// The reading of a set file's text on top of `groups`, as gfsHotKeySet_read does it;
// each line that the record cannot take is told in `skipped` ("line 5 names ...").
QString hotKeySetParse(const QString &text, HotKeySet &groups, QStringList *skipped = nullptr);
// The 37 lines of a set file as the writer makes them.
QStringList hotKeySetLines(const HotKeySet &groups, const QString &sTitle);
// The bytes of the record as a set file with the title.
QByteArray hotKeySetBytes(const QString &sTitle);
// Writes `groups` as set `sSetNumber`, as gpHotKeySet_write writes the record.
bool hotKeySetWrite(const QString &sSetNumber, const HotKeySet &groups, const QString &sTitle);
// Writes the record as set `sSetNumber`. On failure the user is told what failed
// and false comes back; the record is untouched either way.
bool gpHotKeySet_write(const QString &sSetNumber, const QString &sTitle);

qint32 glHotKeyColor_value(const QString &sName);
QString gfsHotKeyColor_name(qint32 lColor);

// The catalogue: the names of HKSET*.SDF in the data folder, found anew each time.
QStringList hotKeySetFiles();
// The number forms of a listed name: the digits of the whole name, or of its last 7 characters.
QString hotKeySetDigits(const QString &sFileName);
QString hotKeySetShownDigits(const QString &sFileName);
// The number of a set's own file name, "HKSET", digits, ".SDF", when it is 1 or
// more; empty for a stray file such as HKSET01-old.SDF or HKSET00.SDF.
QString hotKeySetNumber(const QString &sFileName);

// "07 Lunch Menu": file form of the number, a blank, the title; empty for a blank number.
QString gfsHotKeySet_label(const QString &sSetNumber);

// What a removal could not do. A set is only deleted when every link to it was removed.
struct SetRemoval {
    bool removed = false;
    QStringList problems; // one line per file that could not be read or rewritten
};
// Removes a set and every key line that links to it in the other sets; a number
// below 1 is refused, since an empty link reads as 0. Lines without a link are kept.
SetRemoval gpHotKeySet_remove(const QString &sSetNumber);
// Whether a line of a set file is a key that opens set `set`, as a removal takes it out.
bool hotKeyLineLinksTo(const QString &line, double set);

// One key of the special or coupon key screen, as its button holds it: a special
// key's Caption is label, carriage return, keyboard character, and its Tag the
// character; a coupon key's Caption is the label and its Tag "~SCOUPN|" and the amount.
struct SpecialKey {
    int Index = 0; // 0 to 2
    QString Caption;
    QString Tag;
};

inline constexpr const char *kCouponMarker = "~SCOUPN";

// Fills one key from COUPON.BDF or SPECIAL.BDF, as gbCouponKeys and gbSpecialKeys choose.
void gpSpecialKey_read(SpecialKey &oButton);
// Rewrite SPECIAL.BDF and COUPON.BDF; on failure the user is told and false comes back.
bool gpSpecialKeys_write(const QString &sKey1, const QString &sKey2, const QString &sKey3);
bool gpCouponKeys_write(const SpecialKey &oKey1, const SpecialKey &oKey2, const SpecialKey &oKey3);
// A coupon amount the sales screen can read: a number of at most two decimals ("1", "1.5", ".50").
bool gfbCouponAmount_valid(const QString &sAmount);
