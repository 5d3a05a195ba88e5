#include "database/DbEngine.h"
#include "support/DbTest.h"
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

using namespace testing_support;

namespace {

class FaultTest : public DbTest, public testing_support::OnEachEngine {
protected:
    void seed() override
    {
        ASSERT_TRUE(connect());
        for (int i = 1; i <= 5; ++i)
            ASSERT_TRUE(insert(QString("ITEM %1").arg(i), QString::number(i)));
    }
    bool read(qint16 op)
    {
        QString sql;
        return gfbDBSM_Record(0, op, 1, false, false, sql);
    }
};

} // namespace

// Bytes that are no database.
TEST_P(FaultTest, ADamagedFileIsOneBoxPerActionAndOnePerCallOutsideOne)
{
    if (testing_support::testOnPostgres())
        GTEST_SKIP() << "a file of the embedded engine";
    damageDatabase();
    for (int action = 0; action < 2; ++action) {
        const DbAction a;
        EXPECT_FALSE(read(opFirst));
        EXPECT_FALSE(read(opNext));
        QString table;
        EXPECT_EQ(glDBSM_Count(0, table), 0);
        EXPECT_EQ(glDBSM_Execute("UPDATE items SET Qty = 1"), 0);
    }
    EXPECT_EQ(boxTexts(), QStringList({kDamagedBox, kDamagedBox}));
    EXPECT_TRUE(readDataFile("PVSW.log").contains("Description: file is not a database"));
    EXPECT_FALSE(read(opEqual));
    EXPECT_FALSE(read(opNext));
    EXPECT_EQ(boxTexts(), QStringList({kDamagedBox, kDamagedBox}));
}

TEST_P(FaultTest, ADatabaseFileCutToNothingIsOneBoxPerAction)
{
    if (testing_support::testOnPostgres())
        GTEST_SKIP() << "a file of the embedded engine";
    gItem.SL = "1";
    ASSERT_TRUE(read(opEqual));
    ASSERT_TRUE(QFile::resize(dataPath() + "/TestDB.db", 0));
    for (int action = 0; action < 2; ++action) {
        const DbAction a;
        EXPECT_FALSE(read(opNext));
        EXPECT_FALSE(read(opNext));
        EXPECT_FALSE(read(opFirst));
        QString table;
        EXPECT_EQ(glDBSM_Count(0, table), 0);
    }
    EXPECT_EQ(boxTexts(), QStringList({kDamagedBox, kDamagedBox}));
    EXPECT_EQ(QFileInfo(dataPath() + "/TestDB.db").size(), 0) << "no table made in the cut file";
}

TEST_P(FaultTest, UpdateAndDeleteFindARowThatHoldsNull)
{
    ASSERT_TRUE(QSqlQuery(gpDBSM_Engine()->db())
                    .exec("INSERT INTO items VALUES ('NULL QTY', '9', 'N', NULL)"));
    EXPECT_FALSE(insert("NULL QTY", "9"));
    EXPECT_EQ(gsInsertError, "Duplicate Key");
    ASSERT_TRUE(insert("NULL QTY", "8"));
    gItem.SL = "9";
    ASSERT_TRUE(read(opEqual));
    gItem.Description = "CHANGED";
    QString sql;
    ASSERT_TRUE(gfbDBSM_Record(0, opUpdate, 1, false, false, sql));
    gItem.SL = "9";
    ASSERT_TRUE(read(opEqual));
    EXPECT_EQ(gItem.Description.trimmed(), "CHANGED");
    gItem.SL = "8";
    ASSERT_TRUE(read(opEqual));
    EXPECT_EQ(gItem.Description.trimmed(), "NULL QTY") << "the row like it stays";
    gItem.SL = "9";
    ASSERT_TRUE(read(opEqual));
    ASSERT_TRUE(gfbDBSM_Record(0, opDelete, 1, false, false, sql));
    EXPECT_FALSE(read(opEqual));
    QString table;
    EXPECT_EQ(glDBSM_Count(0, table), 6) << "the other rows stay";
    EXPECT_EQ(table, "items");
    EXPECT_TRUE(boxes().isEmpty());

    const SqlServerEngine server;
    const QVector<QVariant> original{"9", QVariant()};
    EXPECT_EQ(server.updateOneRow("invt1", {"Price"}, {"SL", "BPL3"}, original),
              "UPDATE TOP (1) invt1 SET Price=? WHERE SL=? AND BPL3 IS NULL");
    EXPECT_EQ(server.deleteOneRow("invt1", {"SL", "BPL3"}, original),
              "DELETE TOP (1) FROM invt1 WHERE SL=? AND BPL3 IS NULL");
}

TEST(SqlServerErrors, TheServersNumbersBecomeTheProvidersNumbers)
{
    const auto mapped = [](int native, const QString &text = "x") {
        return SqlServerEngine().errorOf(
            QSqlError("QODBC: Unable to execute statement", text,
                      native ? QSqlError::StatementError : QSqlError::ConnectionError,
                      native ? QString::number(native) : QString()));
    };
    EXPECT_EQ(
        mapped(15248, "[FreeTDS][SQL Server]Caution: a name. [FreeTDS][SQL Server]Either").text,
        "Caution: a name. Either");
    EXPECT_EQ(mapped(2601, "[Microsoft][ODBC Driver 17 for SQL Server][SQL Server]Cannot insert "
                           "duplicate key row in object 'dbo.invt1'.")
                  .text,
              "Cannot insert duplicate key row in object 'dbo.invt1'.");
    // Refused statements, which the upgrade at every start passes over; failures of the
    // server or the connection (10054: a link dropped, as the platform's driver numbers
    // it) are never passed over.
    for (const int native : {2705, 15248, 4924, 2601})
        EXPECT_EQ(mapped(native).number, kErrCommand) << native;
    for (const int native : {1222, 824, 229, 20004, 10054, 11, 0})
        EXPECT_EQ(mapped(native).number, kErrProvider) << native;
    EXPECT_EQ(mapped(1222).fault, DbFault::Busy);
    EXPECT_EQ(mapped(824).fault, DbFault::Damaged);
    EXPECT_EQ(mapped(229).fault, DbFault::None);
}

TEST_P(FaultTest, AColumnAnotherStationAddsLeavesTheReadsWhole)
{
    gItem.SL = "1";
    ASSERT_TRUE(read(opEqual));
    ASSERT_TRUE(read(opNext));
    // A newer version's first start at another station widens the table.
    auto station = anotherStation();
    for (int i = 1; i <= 40; ++i)
        ASSERT_TRUE(
            QSqlQuery(station->db()).exec(QString("ALTER TABLE items ADD Spare%1 INT").arg(i)));
    const struct {
        qint16 op;
        const char *sl;
    } walk[] = {{opNext, "3"}, {opNext, "4"}, {opPrevious, "3"}, {opEqual, "3"}, {opFirst, "1"}};
    for (const auto &step : walk) {
        const DbAction action;
        EXPECT_TRUE(read(step.op));
        EXPECT_EQ(gItem.SL.trimmed(), step.sl);
        EXPECT_EQ(gfsDBSM_FieldName(0, "spare40").toLower(), "spare40") << "the new columns";
    }
    EXPECT_TRUE(boxes().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Engines, FaultTest, testing_support::kEachEngine,
                         testing_support::engineName);
