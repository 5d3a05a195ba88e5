#include "database/zelDBSM_InventoryKey.h"
#include "common/Conversions.h"
#include "common/zelFormats.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"

bool gfbInventory_ByHotKey(const QString &sItem, const QString &sIdSelect)
{
    QString sql;
    if (sIdSelect == "No") {
        gInventoryRecord.setText("SL", gfsSL_toStored(gfsSL_normalize(sItem)));
        return gfbDBSM_Record(1, opEqual, 1, false, false, sql);
    }
    if (sIdSelect == "Yes") {
        gInventoryRecord.setText("ItemID", conv::RTrim(sItem));
        return gfbDBSM_Record(1, opEqual, 2, false, false, sql);
    }
    return false;
}
