#pragma once
#include "hotkeys/hkeyServices.h"
#include <QString>

// Writes `sets` full sets into the data folder: every key has an item and a
// label, and every set but the first links back to set 1.
inline void seedBenchSets(int sets)
{
    for (int n = 1; n <= sets; ++n) {
        gpHotKeySet_clear();
        for (int g = 1; g <= 4; ++g) {
            gHotKeyGroups[g].Caption = QString("Column %1").arg(g);
            for (int k = 1; k <= 8; ++k) {
                HotKeyButton &b = gHotKeyGroups[g].Buttons[k];
                b.Caption = QString("Key %1-%2").arg(g).arg(k);
                b.Item = QString("%1").arg(n * 100 + k, 7, 10, QChar('0')) + ".0";
                b.IdSelect = "No";
            }
        }
        if (n != 1)
            gHotKeyGroups[4].Buttons[8] = {"To set 1", "", "1", "", "No", ""};
        gpHotKeySet_write(QString("%1").arg(n, 2, 10, QChar('0')), QString("Set %1").arg(n));
    }
}
