#pragma once
#include "hotkeys/hkeyServices.h"
#include <QList>

// What differs between two states of a set, in words: "Column 2 key 5: label Coffee
// -> Tea; item 0001234.5 -> 0001299.0".
struct SetDifference {
    int group = 0; // 0 for the set's title
    int key = 0;   // 0 for the column's title and colour
    QString text;
};

QList<SetDifference> hotKeySetDifferences(const HotKeySet &before, const QString &titleBefore,
                                          const HotKeySet &after, const QString &titleAfter);
