#pragma once
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Upc.h"

namespace testing_support {

// A bar code row written through the table module, as the program writes it.
inline bool addUpc(const QString &sl, const QString &upc, int invUid = 0,
                   QString *statement = nullptr)
{
    gUpcRecord.clear();
    gUpcRecord.setText("SL", sl);
    gUpcRecord.setText("UPC", upc);
    gUpcRecord.setNumber("InvUID", invUid);
    QString sql;
    const bool added = gfbDBSM_Record(tblUpc, opInsert, 0, false, false, sql);
    if (statement)
        *statement = sql;
    return added;
}

} // namespace testing_support
