#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "support/DbTest.h"
#include <QFileInfo>

using namespace platform;
using namespace testing_support;

namespace {

// The embedded connection's settings and log; a server's are PgServerTest's.
class ConnectTest : public DbTest, public testing_support::OnEachEngine {};

void store(const char *key, const QString &v)
{
    SaveSetting("ZEL Settings", "DATABASE", key, v);
}

} // namespace

TEST_P(ConnectTest, AGoodStartLogsEightLinesAndOpensTheTable)
{
    ASSERT_TRUE(connect());
    EXPECT_EQ(logText(), "TestDB\r\nServername = STOREPC\\ZEL\r\nset Server \r\nServer set \r\n"
                         "Connect now STOREPC\\ZEL clerk secret\r\nServer Status = 1\r\n"
                         "Server Name = STOREPC\r\nTime verified\r\n");
    EXPECT_TRUE(gbConnected);
    EXPECT_TRUE(gTables[0].bOpen);
    EXPECT_TRUE(gfbDBSM_TableExists("ITEMS"));
    EXPECT_EQ(gfsDBSM_TableList("IT"), "items|");
    EXPECT_EQ(gfsDBSM_TableList("x"), "");
}

TEST_P(ConnectTest, AnEmptyServerEndsWithoutAWordAndAMissingDatabaseOrServerSaysSo)
{
    store("Server", "   ");
    EXPECT_EQ(exitCode([this] { connect(); }), 0);
    EXPECT_TRUE(boxes().isEmpty());

    store("Server", "STOREPC\\ZEL");
    store("DBName", "");
    EXPECT_EQ(exitCode([this] { connect(); }), 0);
    auto shown = boxes();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].style, 16);
    EXPECT_EQ(shown[0].text, "Database not found.\r\nIf you are trying to connect to an existing "
                             "database then run the Database Configuration.\r\nTo create a new "
                             "database or convert files from Pervasive run Orvantis");
    EXPECT_TRUE(logText().endsWith("Time verified\r\nDatabase Create\r\n"));

    // The folder of the embedded engine out of reach: the management box first.
    gDataPath.setDataPath(dataPath() + "/gone");
    store("DBName", "TestDB");
    giFileCount = 1;
    EXPECT_EQ(exitCode([] { gfbDBSM_Connect(); }), 0);
    shown = boxes();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].title, "ZEL MSDE");
    EXPECT_TRUE(shown[0].text.endsWith(QString::number(kErrProvider)));
    EXPECT_TRUE(shown[1].text.startsWith("Database not found."));
    EXPECT_TRUE(logText().contains("Server Status = 0\r\n"));
}

TEST_P(ConnectTest, ServerWithoutInstanceCannotBeCutButStaysUsable)
{
    store("Server", "STOREPC");
    store("DBName", " testdb "); // names compare trimmed and without case
    ASSERT_TRUE(connect());
    EXPECT_EQ(boxTexts(), QStringList({"Invalid procedure call or argument5"}));
    EXPECT_FALSE(logText().contains("Time verified"));
}

TEST_P(ConnectTest, ConnectionLogFallsBackWhenTheProgramFolderIsReadOnly)
{
    platform::setApplicationFolder(temp.filePath("no-such-folder"));
    EXPECT_NE(gfsDBSM_LogFolder(), temp.filePath("no-such-folder"));
    EXPECT_TRUE(QFileInfo(gfsDBSM_LogFolder()).isWritable());
}

TEST(SqlServerEngine, ConnectionStringEscapesItsValues)
{
    EXPECT_EQ(SqlServerEngine::connectionString("STOREPC\\ZEL", "ZELDATA", "qx", "p;w}d"),
              "DRIVER={FreeTDS};SERVER={STOREPC\\ZEL};DATABASE={ZELDATA};UID={qx};PWD={p;w}}d};"
              "TDS_Version=7.4;ClientCharset=UTF-8");
}

INSTANTIATE_TEST_SUITE_P(Engines, ConnectTest, testing::Values(testing_support::TestEngine::SQLite),
                         testing_support::engineName);
