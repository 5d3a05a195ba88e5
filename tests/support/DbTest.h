#pragma once
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "support/HkTest.h"
#include "support/PgCluster.h"
#include <QSqlQuery>
#include <memory>

namespace testing_support {

// The boxes of a database that another station holds or that is damaged.
inline const QString kBusyBox =
    "The database is busy at another station. Please try again in a moment.";
inline const QString kDamagedBox = "The database is damaged and cannot be read. Please call "
                                   "support; the details are in PVSW.log in the data folder.";
inline const QString kOfflineBox = "The database server cannot be reached. Check that it is "
                                   "running and that this station is on the network, then try "
                                   "again.";

// The record buffer of a small test table: fixed-width text padded with blanks.
struct ItemRecord {
    QString Description; // 30
    QString SL;          // 8
    QString ItemID;      // 25
    int Qty = 0;
};
extern ItemRecord gItem;

// The engine the database test under way runs on: its parameter for a fixture
// that runs on each engine, else "PostgreSQL" in HK_DB_ENGINE for the test run's
// cluster, the embedded engine otherwise.
bool testOnPostgres();

// The database's files and log go to the data folder of the test under way
// (HkTest's), as the program's start registers its own.
void registerTestDataFolder();

// The engines a database test may run on.
enum class TestEngine { SQLite, PostgreSQL };
std::string engineName(const testing::TestParamInfo<TestEngine> &info);
// A DbTest fixture that also derives from this runs each of its tests (TEST_P)
// once per engine it is instantiated with: INSTANTIATE_TEST_SUITE_P(Engines,
// Fixture, kEachEngine, engineName). On PostgreSQL a test skips when the run has
// no cluster, and fails without one under CI.
class OnEachEngine : public testing::WithParamInterface<TestEngine> {};
inline const auto kEachEngine = testing::Values(TestEngine::SQLite, TestEngine::PostgreSQL);

// A fresh database (embedded, or on the test run's cluster) with the test table
// as file 0: key 1 SL, key 2 ItemID, key 3 Description + SL.
class DbTest : public HkTest {
public:
    // The database's name on the cluster: one per test process, as tests run side by side.
    static QString serverDatabase();

protected:
    // Makes the database, then runs seed() unless the test skips or failed already.
    void SetUp() override;
    void TearDown() override;
    // The fixture's own set-up once the database is there: its tables and rows.
    virtual void seed() {}
    // Connects as the start-up does; the log lines go to the test's program folder.
    bool connect();
    void setItem(const QString &description, const QString &sl, const QString &itemId = QString(),
                 int qty = 0);
    bool insert(const QString &description, const QString &sl, const QString &itemId = QString(),
                int qty = 0);
    QString logText() const;
    QString appFolder() const { return temp.filePath("app"); }
    // Another station's connection that holds the whole database locked until
    // it is released (or destroyed).
    std::unique_ptr<SqliteEngine> lockAsAnotherStation();
    void release(SqliteEngine &station) { EXPECT_TRUE(QSqlQuery(station.db()).exec("COMMIT")); }
    // Another station's connection to the test's database, on the test's engine.
    std::unique_ptr<DbEngine> anotherStation();
    // Overwrites the database file in place with bytes that are no database.
    void damageDatabase();

    // Set before SetUp: on PostgreSQL the test runs on a cluster of its own,
    // which it may stop and start, rather than on the test run's.
    bool m_ownServer = false;
    std::unique_ptr<PgCluster> m_server;

private:
    void makeDatabase();
};

} // namespace testing_support
