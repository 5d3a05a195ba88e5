#pragma once
#include <QString>
#include <array>

struct HotKeyButton {
    QString Caption;
    QString Item;
    QString LinkSet;
    QString Root;
    QString IdSelect;
    QString Icon;
};

struct HotKeyGroup {
    QString Caption;
    qint32 Color = 0;
    std::array<HotKeyButton, 9> Buttons; // 1 to 8, top to bottom; 0 unused
};

// The one set in memory: groups 1 to 4 are the columns, 0 is unused.
extern std::array<HotKeyGroup, 5> gHotKeyGroups;

// The platform's button face colour, written as "*Default".
inline constexpr qint32 kButtonFaceColor = static_cast<qint32>(0x8000000F);
// Silver: what every unknown colour name reads as.
inline constexpr qint32 kSilverColor = 0xC0C0C0;

// "HKSET07.SDF" and the like, in the data folder.
QString hotKeySetPath(const QString &sFileNumber);

void gpHotKeySet_clear();
// Loads a set on top of the record and returns its title; empty when the file is
// missing (after saying so) or has no title.
QString gfsHotKeySet_read(const QString &sSetNumber);
// Writes the record as set `sSetNumber`. On failure the user is told what failed
// and false comes back; the record is untouched either way.
bool gpHotKeySet_write(const QString &sSetNumber, const QString &sTitle);

qint32 glHotKeyColor_value(const QString &sName);
QString gfsHotKeyColor_name(qint32 lColor);
