#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/frm_Lookup.h"
#include "lookup/sm_DataGrid.h"
#include "platform/ui/MSFlexGrid.h"
#include "support/LookupRows.h"
#include "support/StoreDb.h"
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTest>

using testing_support::kOfflineBox;
using testing_support::StoreDbTest;

namespace {

using testing_support::firstRow;

// The lookup on a PostgreSQL cluster of the test's own, which it stops and starts.
// Run by the PostgreSQL pass of the tests only.
class PgServerLookupTest : public StoreDbTest {
protected:
    PgServerLookupTest() { m_ownServer = true; }
    void SetUp() override
    {
        StoreDbTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return; // no cluster to run on
        openStore();
        for (int i = 1; i <= 30; ++i)
            addItem(QString::number(40000000 + i), QString("IT-%1").arg(i),
                    QString("ITEM %1").arg(i, 2, 10, QChar('0')));
        giInventorySearch = 0;
        gLookup = InventoryLookup(); // each test opens the lookup as a new start does
        giLinkOption = 0;
    }
};

} // namespace

TEST_F(PgServerLookupTest, TheServerStoppedBetweenTwoMovesIsOneBoxPerKeyAndPagingComesBack)
{
    modal.drive("frm_Lookup", [this](QDialog &d) {
        auto &f = static_cast<frm_Lookup &>(d);
        QCoreApplication::processEvents();
        const QString first = firstRow(f);
        ASSERT_TRUE(m_server->stop());
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_EQ(boxTexts(), QStringList({kOfflineBox}));
        EXPECT_EQ(firstRow(f), first) << "the list stays as it was";
        QTest::keyClicks(f.txtEditValue, "z"); // not on the page: the table is read
        EXPECT_EQ(boxTexts(), QStringList({kOfflineBox})) << "one box for each key";
        EXPECT_LT(clock.elapsed(), 10000) << "no wait beyond the connection timeout";

        QString error;
        ASSERT_TRUE(m_server->restart(&error)) << error.toStdString();
        QTest::keyClick(f.txtEditValue, Qt::Key_PageDown);
        EXPECT_NE(firstRow(f), first) << "paging works again";
        EXPECT_TRUE(boxTexts().isEmpty());
        QTest::keyClick(f.txtEditValue, Qt::Key_Escape);
    });
    EXPECT_EQ(gfsInventory_find(""), "");
    const QList<QByteArray> log = readDataFile("PVSW.log").split('\n');
    ASSERT_GE(log.size(), 3);
    EXPECT_TRUE(
        log[0].contains(" [EXE FAIL]" + QByteArray::number(kErrProvider) + " Description: "));
    EXPECT_TRUE(log[0].contains("Source: PostgreSQL"));
    EXPECT_TRUE(log[1].startsWith("SELECT")) << "the statement as the program built it";
}
