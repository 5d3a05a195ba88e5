#include "shell/hkeyDBSM_Setup.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "hotkeys/hkeyGlobal.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Interface.h"

bool gfbDBSM_Setup()
{
    const QString dataPath = gDataPath.DataPath();
    giFileCount = 3;
    gpDBSM_RegisterTables();
    if (!gfbDBSM_Connect())
        return false;
    gpCommon_Register(0, dataPath, 0, QString());
    int store = 0;
    if (gfbDBSM_OpenTable(0, false)) {
        QString sql;
        if (!gfbDBSM_Record(0, opFirstPos, 0, false, false, sql))
            return false;
        const QVariant stored = gfvDBSM_Field(0, "StoreNumber");
        store = static_cast<int>(gCommonRecord.number("StoreNumber"));
        // The store number names the store's tables: one that is missing or
        // negative would open another store's data, or none.
        if (stored.isNull() || store < 0) {
            platform::MsgBox("The store number in the COMMON table is " +
                                 (stored.isNull() ? QString("empty") : stored.toString()) +
                                 ".\rSet the store number in the suite's configuration and start "
                                 "again.",
                             platform::vbCritical);
            return false;
        }
        gsStoreNumber = QString::number(store);
        const QString multi = gCommonRecord.text("MultiStore").toUpper();
        gbMultiStore = multi == "H" || multi == "Y" || store == 0;
    }
    gpInventory_Register(1, dataPath, store, QString());
    gpUpc_Register(2, dataPath, store, QString());
    return true;
}
