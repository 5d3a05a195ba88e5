#include "support/DbTest.h"
#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

namespace testing_support {

ItemRecord gItem;

namespace {

TestEngine currentEngine = TestEngine::SQLite;

void setRecord(const QString &description, const QString &sl, const QString &itemId, int qty)
{
    gItem = {description.leftJustified(30, ' ', true), sl.leftJustified(8, ' ', true),
             itemId.leftJustified(25, ' ', true), qty};
}

void keyValues(qint16, qint16 iKey)
{
    if (iKey == 3)
        gpDBSM_SetKey(0, 2, {{0, gItem.Description}, {1, gItem.SL}});
    else if (iKey == 1 || iKey == 2)
        gpDBSM_SetKey(0, 1, {{iKey, iKey == 1 ? gItem.SL : gItem.ItemID}});
}

void rowToRecord(qint16)
{
    setRecord(gfvDBSM_Field(0, 0).toString(), gfvDBSM_Field(0, 1).toString(),
              gfvDBSM_Field(0, 2).toString(), gfvDBSM_Field(0, 3).toInt());
}

void recordToRow(qint16)
{
    const QVariant values[] = {gItem.Description, gItem.SL, gItem.ItemID, gItem.Qty};
    for (int field = 0; field < 4; ++field) gpDBSM_SetField(0, field, values[field]);
}

// Every quote of the text fields made a blank, in the record too.
QString insertValues(qint16)
{
    QString values;
    for (QString *field : {&gItem.Description, &gItem.SL, &gItem.ItemID})
        values += '\'' + (*field = gfsDBSM_SqlText(*field, false)) + "',";
    return values + QString::number(gItem.Qty);
}

// Drops the test's database on the cluster, and makes it again when `make` is set.
bool freshServerDatabase(const PgCluster &cluster, bool make, QString *error)
{
    PostgresEngine server;
    DbError e;
    if (server.connectServer(cluster.server(), PgCluster::kUser, PgCluster::kPassword, e) != 1) {
        *error = e.text;
        return false;
    }
    QSqlQuery q(server.admin());
    if (!q.exec("DROP DATABASE IF EXISTS " + DbTest::serverDatabase() + " WITH (FORCE)")) {
        *error = q.lastError().text();
        return false;
    }
    return !make || PostgresEngine::create(cluster.server(), PgCluster::kUser, PgCluster::kPassword,
                                           DbTest::serverDatabase(), error);
}

void saveDatabaseSettings(const QStringList &values)
{
    const char *keys[] = {"Engine", "DBName", "Server", "UserName", "Password"};
    for (int i = 0; i < 5; ++i)
        platform::SaveSetting("ZEL Settings", "DATABASE", keys[i], values[i]);
}

} // namespace

bool testOnPostgres()
{
    return currentEngine == TestEngine::PostgreSQL;
}

std::string engineName(const testing::TestParamInfo<TestEngine> &info)
{
    return info.param == TestEngine::PostgreSQL ? "PostgreSQL" : "SQLite";
}

QString DbTest::serverDatabase()
{
    return QString("hk_test_%1").arg(QCoreApplication::applicationPid());
}

void registerTestDataFolder()
{
    gpDBSM_RegisterDataFolder([] { return gDataPath.DataPath(); });
}

void DbTest::SetUp()
{
    makeDatabase();
    if (!IsSkipped() && !HasFatalFailure())
        seed();
}

void DbTest::makeDatabase()
{
    HkTest::SetUp();
    registerTestDataFolder();
    if (const auto *each = dynamic_cast<const OnEachEngine *>(this))
        currentEngine = each->GetParam();
    else
        currentEngine =
            qEnvironmentVariable("HK_DB_ENGINE").compare("PostgreSQL", Qt::CaseInsensitive)
                ? TestEngine::SQLite
                : TestEngine::PostgreSQL;
    QDir(temp.path()).mkpath("app");
    platform::setApplicationFolder(appFolder());
    saveDatabaseSettings({"SQLite", "TestDB", "STOREPC\\ZEL", "clerk", " secret "});
    gpDBSM_RegisterDispatch({keyValues, rowToRecord, recordToRow, insertValues});
    gItem = ItemRecord();
    gbKeyFromBuffer = false;
    if (!testOnPostgres()) {
        ASSERT_TRUE(SqliteEngine::create(dataPath() + "/TestDB.db", nullptr));
        return;
    }
    QString error;
    if (m_ownServer)
        m_server = std::make_unique<PgCluster>();
    const PgCluster *cluster = !m_server ? sharedPgCluster(&error)
                               : m_server->start(temp.filePath("cluster"), &error) ? m_server.get()
                                                                                   : nullptr;
    if (!cluster && !qEnvironmentVariableIsEmpty("CI"))
        FAIL() << "no PostgreSQL cluster: " << error.toStdString();
    if (!cluster)
        GTEST_SKIP() << "no PostgreSQL cluster: " << error.toStdString();
    ASSERT_TRUE(freshServerDatabase(*cluster, true, &error)) << error.toStdString();
    saveDatabaseSettings({"PostgreSQL", serverDatabase(), cluster->server(), PgCluster::kUser,
                          PgCluster::kPassword});
}

void DbTest::TearDown()
{
    gpDBSM_Disconnect();
    QString error;
    if (m_server)
        m_server->stop();
    else if (const PgCluster *cluster = testOnPostgres() ? sharedPgCluster(&error) : nullptr)
        freshServerDatabase(*cluster, false, &error);
    platform::setApplicationFolder(QString());
    HkTest::TearDown();
}

bool DbTest::connect()
{
    giFileCount = 1;
    if (!gfbDBSM_Connect())
        return false;
    TableDescriptor &t = gTables[0];
    t.sID = "ITEMS";
    t.sTableName = "items";
    t.sTitle = "Items";
    t.sCreateSQL =
        "CREATE TABLE items (Description CHAR(30), SL CHAR(8), ItemID CHAR(25), Qty INT)";
    t.sIndexSQL = "CREATE UNIQUE INDEX key1 ON items (SL); CREATE INDEX key2 ON items (ItemID);"
                  "CREATE CLUSTERED INDEX key3 ON items (Description,SL);";
    return gfbDBSM_OpenTable(0, false);
}

void DbTest::setItem(const QString &description, const QString &sl, const QString &itemId, int qty)
{
    setRecord(description, sl, itemId, qty);
}

bool DbTest::insert(const QString &description, const QString &sl, const QString &itemId, int qty)
{
    setItem(description, sl, itemId, qty);
    QString sql;
    return gfbDBSM_Record(0, opInsert, 0, false, false, sql);
}

std::unique_ptr<SqliteEngine> DbTest::lockAsAnotherStation()
{
    auto station = std::make_unique<SqliteEngine>(dataPath());
    DbError error;
    EXPECT_TRUE(station->open("TestDB", error)) << error.text.toStdString();
    EXPECT_TRUE(QSqlQuery(station->db()).exec("BEGIN EXCLUSIVE"));
    return station;
}

std::unique_ptr<DbEngine> DbTest::anotherStation()
{
    const DBSM_Settings where = gfDBSM_Settings();
    std::unique_ptr<DbEngine> station = makeDbEngine(where.sEngine, dataPath());
    DbError error;
    EXPECT_EQ(station->connectServer(where.sServer, where.sUser, where.sPassword, error), 1);
    EXPECT_TRUE(station->open(where.sDBName, error)) << error.text.toStdString();
    return station;
}

void DbTest::damageDatabase()
{
    QFile f(dataPath() + "/TestDB.db");
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(QByteArray(16384, '\x5a'));
}

QString DbTest::logText() const
{
    QFile f(appFolder() + "/52.txt");
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
}

} // namespace testing_support
