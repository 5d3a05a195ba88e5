#include "platform/SettingsStore.h"
#include "support/DbTest.h"
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <stop_token>
#include <thread>

using namespace testing_support;

TEST(PostgresEngine, TranslatesTheStatementsItCannotRunAsBuilt)
{
    const PostgresEngine e;
    const struct {
        QString built, sent;
    } statements[] = {
        {"SELECT  TOP 1 * FROM T WHERE K1>'a' ORDER BY K1",
         "SELECT  * FROM T WHERE K1>'a' ORDER BY K1 LIMIT 1"},
        // The next of a two-segment key is one comparison of the pair.
        {dbsm::getNext("items", {"Description", "SL"}, {"O'NE", "1"}, true).shape,
         "SELECT * FROM items WHERE (Description,SL)<(?,?) ORDER BY Description DESC,SL DESC "
         "LIMIT 1"},
        {"SELECT TOP 1 * FROM T WHERE ltrim(ItemID)>='A' ORDER BY ltrim(ItemID)",
         "SELECT * FROM T WHERE (ltrim(ItemID)::bpchar COLLATE ZELCI)>='A' ORDER BY "
         "(ltrim(ItemID)::bpchar COLLATE ZELCI) LIMIT 1"},
        {"SELECT TOP 1 * FROM UPC1 WHERE LEFT(upc,4)='0123' order by UPC",
         "SELECT * FROM UPC1 WHERE (LEFT(upc,4)::bpchar COLLATE ZELCI)='0123' order by UPC LIMIT "
         "1"},
        {"SELECT * FROM T WHERE Description like '%A\\%B%' ESCAPE '\\' AND x NOT LIKE 'like'",
         "SELECT * FROM T WHERE Description COLLATE \"C\" ILIKE '%A\\%B%' ESCAPE '\\' AND x "
         "COLLATE \"C\" NOT ILIKE 'like'"},
        {"CREATE TABLE t (SL CHAR(8), Price DECIMAL(18,4), qty INT)",
         "CREATE TABLE t (SL CHAR(8) COLLATE ZELCI, Price DECIMAL(18,4), qty INT)\n"
         "COMMENT ON COLUMN t.SL IS 'SL'\nCOMMENT ON COLUMN t.Price IS 'Price'"},
        {"CREATE UNIQUE CLUSTERED INDEX key0 ON invt1 (SL)",
         "CREATE UNIQUE INDEX invt1_key0 ON invt1 (SL)"},
        {"Create Index idx_2 On invt1 (ItemID)",
         "CREATE INDEX invt1_idx_2 ON invt1 (ItemID)\nCREATE INDEX IF NOT EXISTS "
         "invt1_idx_2_ltrim ON invt1 ((ltrim(ItemID)::bpchar COLLATE ZELCI))"},
        {"sp_RENAME 'invt1.Flg2', 'NeverOrder ', 'COLUMN'",
         "ALTER TABLE invt1 RENAME COLUMN Flg2 TO NeverOrder\n"
         "COMMENT ON COLUMN invt1.NeverOrder IS 'NeverOrder'"},
        {"ALTER TABLE invt1 ALTER COLUMN itemID CHAR(25)",
         "ALTER TABLE invt1 ALTER COLUMN itemID TYPE CHAR(25) COLLATE ZELCI"},
        {"ALTER TABLE invt1 ALTER COLUMN QtyOnHand Decimal(18,4)",
         "ALTER TABLE invt1 ALTER COLUMN QtyOnHand TYPE Decimal(18,4)"},
        {"Drop index invt1.idx_3", "DROP INDEX IF EXISTS invt1_idx_3"},
        // Values stay as typed.
        {"SELECT * FROM T WHERE a='TOP 1 LEFT(x,1) like ItemID'",
         "SELECT * FROM T WHERE a='TOP 1 LEFT(x,1) like ItemID'"},
    };
    for (const auto &s : statements) EXPECT_EQ(e.translate(s.built), s.sent);
    EXPECT_EQ(e.columnName("price"), "Price") << "as the table declared it";
}

TEST(PostgresEngine, ServerNameIsHostAndPortAndTheInstanceIsLeftOut)
{
    using Pair = std::pair<QString, int>;
    EXPECT_EQ(PostgresEngine::hostAndPort("dbhost"), Pair("dbhost", 5432));
    EXPECT_EQ(PostgresEngine::hostAndPort("STOREPC\\ZEL"), Pair("STOREPC", 5432));
    EXPECT_EQ(PostgresEngine::hostAndPort("10.0.0.5:5433\\ZEL"), Pair("10.0.0.5", 5433));
    const PostgresEngine e;
    EXPECT_EQ(e.serverNote("STOREPC\\ZEL"), "Instance ZEL ignored: PostgreSQL at STOREPC:5432");
    EXPECT_EQ(e.serverNote("dbhost:6543"), "");
    EXPECT_EQ(e.machineOf("dbhost:6543"), "dbhost");
}

TEST(PostgresEngine, TheServersStatesBecomeTheProvidersNumbers)
{
    const PostgresEngine e;
    auto error = [&e](const char *text, const char *state) {
        return e.errorOf(QSqlError("", text, QSqlError::StatementError, state));
    };
    DbError missing = error("ERROR:  relation \"invt9\" does not exist\nLINE 1: SELECT", "42P01");
    EXPECT_EQ(missing.number, kErrCommand);
    EXPECT_EQ(missing.text, "Invalid object name 'invt9'.");
    EXPECT_EQ(error("ERROR:  relation \"invt1\" already exists\n(42P07)", "42P07").text,
              "relation \"invt1\" already exists")
        << "one line for PVSW.log, without the driver's SQLSTATE";
    EXPECT_TRUE(error("ERROR:  duplicate key value violates unique constraint", "23505")
                    .text.startsWith("Cannot insert duplicate key row. duplicate key value"));
    EXPECT_EQ(error("ERROR:  column \"spare\" of relation \"t\" already exists", "42701").number,
              kErrCommand)
        << "an existing column is a refused statement, ignored as the other engines'";
    const DbError busy = error("ERROR:  canceling statement due to lock timeout", "55P03");
    EXPECT_EQ(busy.number, kErrProvider);
    EXPECT_EQ(busy.fault, DbFault::Busy);
    EXPECT_EQ(error("ERROR:  invalid page in block 7", "XX001").fault, DbFault::Damaged);
    const DbError gone =
        error("server closed the connection unexpectedly\n\tThis probably means", "");
    EXPECT_EQ(gone.number, kErrProvider);
    EXPECT_EQ(gone.fault, DbFault::Offline);
    EXPECT_EQ(gone.text, "server closed the connection unexpectedly This probably means");
    EXPECT_EQ(error("FATAL:  password authentication failed for user \"hk\"", "28P01").number,
              kErrProvider);
}

// The server's own cases: PostgreSQL only.
class PgServerTest : public DbTest, public testing_support::OnEachEngine {};

TEST_P(PgServerTest, AWrongPasswordOrAnUnknownDatabaseAtStartAreTheStartsBoxesAndTheNameIsTrimmed)
{
    platform::SaveSetting("ZEL Settings", "DATABASE", "Password", "not the password");
    EXPECT_EQ(exitCode([this] { connect(); }), 0);
    QStringList shown = boxTexts();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_TRUE(shown[0].contains("password authentication failed for user \"hk\""));
    EXPECT_TRUE(shown[1].startsWith("Database not found."));
    gpDBSM_Disconnect();

    platform::SaveSetting("ZEL Settings", "DATABASE", "Password", PgCluster::kPassword);
    platform::SaveSetting("ZEL Settings", "DATABASE", "DBName", "no_such_store");
    EXPECT_EQ(exitCode([this] { connect(); }), 0);
    shown = boxTexts();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].startsWith("Database not found."));
    EXPECT_TRUE(logText().endsWith("Time verified\r\nDatabase Create\r\n"));
    gpDBSM_Disconnect();

    // The name is found trimmed and without case, and the database is usable.
    platform::SaveSetting("ZEL Settings", "DATABASE", "DBName",
                          ' ' + serverDatabase().toUpper() + ' ');
    ASSERT_TRUE(connect());
    EXPECT_TRUE(boxes().isEmpty());
    EXPECT_TRUE(logText().contains("Server Name = 127.0.0.1\r\nTime verified\r\n"));
    EXPECT_TRUE(insert("QUOTE'S", "1"));
}

namespace {

// The server of the test's own cluster, stopped as a frozen machine is: its
// sockets stay open and nothing answers. It thaws when the test is done, or
// after half a minute, so that a program that waits for it ends the wait.
std::jthread freeze(const PgCluster &cluster, qint64 backend)
{
    QList<qint64> pids;
    QFile pidFile(cluster.folder() + "/data/postmaster.pid");
    if (pidFile.open(QIODevice::ReadOnly))
        pids << pidFile.readLine().trimmed().toInt();
    pids << backend;
    for (const qint64 pid : pids) ::kill(pid, SIGSTOP);
    return std::jthread([pids](std::stop_token over) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait_for(lock, over, std::chrono::seconds(30),
                                               [] { return false; });
        for (const qint64 pid : pids) ::kill(pid, SIGCONT);
    });
}

// On a cluster of the test's own, which it stops, restarts and freezes.
class PgServerFaultTest : public DbTest, public testing_support::OnEachEngine {
protected:
    PgServerFaultTest() { m_ownServer = true; }
    void seed() override
    {
        ASSERT_TRUE(connect());
        for (int i = 1; i <= 3; ++i)
            ASSERT_TRUE(insert(QString("ITEM %1").arg(i), QString::number(i)));
        gItem.SL = "1";
        ASSERT_TRUE(next());
    }
    bool next()
    {
        const DbAction action;
        QString sql;
        return gfbDBSM_Record(0, opNext, 1, false, false, sql);
    }
};

} // namespace

TEST_P(PgServerFaultTest, AConnectionTheServerDroppedWhileIdleIsOpenedAgainSilently)
{
    ASSERT_TRUE(m_server->stop());
    QString error;
    ASSERT_TRUE(m_server->restart(&error)) << error.toStdString();
    EXPECT_TRUE(next());
    EXPECT_EQ(gItem.SL.trimmed(), "3");
    EXPECT_TRUE(boxes().isEmpty());
    EXPECT_FALSE(QFile::exists(dataPath() + "/PVSW.log"));
}

TEST_P(PgServerFaultTest, AFrozenServerEndsTheActionWithTheOfflineBox)
{
    QSqlQuery pid(gpDBSM_Engine()->db());
    ASSERT_TRUE(pid.exec("SELECT pg_backend_pid()") && pid.next());
    {
        const std::jthread frozen = freeze(*m_server, pid.value(0).toLongLong());
        EXPECT_FALSE(next()) << "the server answered only when it thawed";
        EXPECT_EQ(boxTexts(), QStringList({kOfflineBox}));
        EXPECT_FALSE(next()) << "the next action does not wait for ever either";
        EXPECT_EQ(boxTexts(), QStringList({kOfflineBox}));
    }
    EXPECT_TRUE(next());
    EXPECT_EQ(gItem.SL.trimmed(), "3");
    EXPECT_TRUE(boxes().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, PgServerTest,
                         testing::Values(testing_support::TestEngine::PostgreSQL),
                         testing_support::engineName);
INSTANTIATE_TEST_SUITE_P(Engines, PgServerFaultTest,
                         testing::Values(testing_support::TestEngine::PostgreSQL),
                         testing_support::engineName);
