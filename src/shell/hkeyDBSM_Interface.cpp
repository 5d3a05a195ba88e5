#include "shell/hkeyDBSM_Interface.h"
#include "database/ZelDBSM_MSDE.h"
#include "settings/clsDataPath.h"

void gpDBSM_RegisterTables()
{
    gpDBSM_RegisterDataFolder([] { return gDataPath.DataPath(); });
    gpDBSM_RegisterStoreTables();
}
