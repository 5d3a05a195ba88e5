#include "lookup/LookupScreen.h"
#include <QElapsedTimer>

using namespace testing_support;

namespace {

// The lookup on a PostgreSQL cluster of the test's own, which it stops and starts.
// Run by the PostgreSQL pass of the tests only.
class PgServerLookupTest : public LookupScreenFixture {
protected:
    PgServerLookupTest() { m_ownServer = true; }
};

} // namespace

TEST_F(PgServerLookupTest, TheServerStoppedBetweenTwoMovesIsOneBoxPerKeyAndPagingComesBack)
{
    if (!testOnPostgres())
        GTEST_SKIP() << "a server to stop is there on the PostgreSQL pass only";
    moreItems();
    onLookup([this](frm_Lookup &f) {
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
    const QByteArray log = readDataFile("PVSW.log");
    EXPECT_TRUE(log.contains(" [EXE FAIL]" + QByteArray::number(kErrProvider) + " Description: "));
    EXPECT_TRUE(log.split('\n').value(1).startsWith("SELECT")) << "the statement as it was built";
}
