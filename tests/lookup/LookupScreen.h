#pragma once
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "lookup/sm_DataGrid.h"
#include "platform/ui/MSFlexGrid.h"
#include "support/LookupRows.h"
#include "support/StoreDb.h"
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

namespace testing_support {

// The store with its sample items, and the lookup opened as a new start does.
class LookupScreenFixture : public StoreDbTest {
protected:
    void seed() override
    {
        openStore();
        addSampleItems();
        giInventorySearch = 0;
        gLookup = InventoryLookup();
        giLinkOption = 0;
    }
    // Acts on the next lookup shown, once it settled as a shown window does.
    void onLookup(std::function<void(frm_Lookup &)> act)
    {
        modal.drive("frm_Lookup", [act](QDialog &d) {
            QCoreApplication::processEvents();
            act(static_cast<frm_Lookup &>(d));
        });
    }
    // Thirty more items, "ITEM 01" to "ITEM 30": the list is longer than a page.
    void moreItems()
    {
        for (int i = 1; i <= 30; ++i)
            addItem(QString::number(40000000 + i), QString("IT-%1").arg(i),
                    QString("ITEM %1").arg(i, 2, 10, QChar('0')));
    }
};

} // namespace testing_support
