#include "support/DbTest.h"
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

using namespace testing_support;

namespace {

class RecordTest : public DbTest, public testing_support::OnEachEngine {
protected:
    void seed() override
    {
        ASSERT_TRUE(connect());
        for (const auto &[d, sl, id] : {std::tuple{"COLA 12OZ", "10000105", "  AB-1"},
                                        {"COLA 12OZ", "10000107", "AB-2"},
                                        {"cola diet", "10000200", "100"},
                                        {"BREAD", "20000001", "B"},
                                        {"O'NEIL TEA", "30000001", "T"},
                                        {"ZUCCHINI", "40000001", "Z"}})
            ASSERT_TRUE(insert(d, sl, id)) << gsInsertError.toStdString();
    }
    bool op(qint16 code, qint16 key = 1, QString *statement = nullptr, bool row = false)
    {
        QString sql;
        const bool found = gfbDBSM_Record(0, code, key, row, false, sql);
        if (statement)
            *statement = sql;
        return found;
    }
    bool find(const QString &sl)
    {
        gItem.SL = sl;
        return op(opEqual);
    }
    int count()
    {
        QString table;
        return glDBSM_Count(0, table);
    }
    QString desc() const { return gItem.Description.trimmed(); }
    QString sl() const { return gItem.SL.trimmed(); }
};

} // namespace

TEST_P(RecordTest, TwoSegmentWalkReusesItsStatementWithEveryValue)
{
    // Each step binds other values, a quote among them, to the same prepared read. An
    // accent sorts with its letter and before the S/L; the case counts for nothing.
    ASSERT_TRUE(insert("\u00c9clair", "50000001") && insert("Eclair", "50000002"));
    QStringList forward, back;
    for (bool found = op(opFirst, 3); found; found = op(opNext, 3)) forward << sl();
    EXPECT_EQ(forward, QStringList({"20000001", "10000105", "10000107", "10000200", "50000002",
                                    "50000001", "30000001", "40000001"}));
    for (bool found = op(opLast, 3); found; found = op(opPrevious, 3)) back.prepend(sl());
    EXPECT_EQ(back, forward);
    ASSERT_TRUE(
        gfbDBSM_Select(SqlRead("SELECT * FROM items WHERE Description = '\u00e9CLAIR'"), 0, false));
    EXPECT_EQ(gRecordsets[0].RecordCount(), 1) << "an accent is a difference, the case is none";
}

TEST_P(RecordTest, ComparisonsApplyTheOperatorToEverySegmentOrTheRowsColumn)
{
    setItem("BREAD", "99999999");
    QString sql;
    EXPECT_FALSE(op(opGreater, 3)) << "greater in the first column, less in the second";
    setItem("BREAD", "20000000");
    ASSERT_TRUE(op(opGreater, 3, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items WHERE Description>'" +
                       QString("BREAD").leftJustified(30) +
                       "' AND SL>'20000000' ORDER BY Description");
    EXPECT_EQ(desc(), "O NEIL TEA");
    setItem("COLA 12OZ", "");
    EXPECT_FALSE(op(opLess, 1, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items WHERE SL<'        ' ORDER BY SL DESC");
    setItem("", "30000000");
    ASSERT_TRUE(op(opLessEqual));
    EXPECT_EQ(sl(), "20000001");
    sql = "SELECT TOP 1 * FROM items WHERE SL<='2' ORDER BY SL";
    QString given = sql;
    ASSERT_TRUE(gfbDBSM_Record(0, opLessEqual, 1, false, false, given));
    EXPECT_EQ(given, sql + " DESC") << "DESC goes behind a caller's statement too";
    ASSERT_TRUE(find("20000001"));
    ASSERT_TRUE(op(opLess, 1, &sql, true));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items WHERE SL<'20000001' ORDER BY SL DESC");
    EXPECT_EQ(sl(), "20000001") << "the row path compares one column, the buffer stays";
}

TEST_P(RecordTest, FirstAndLastWithAndWithoutAKey)
{
    QString sql;
    ASSERT_TRUE(op(opFirst, -1, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items");
    ASSERT_TRUE(op(opLast, -1, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items ORDER BY Description DESC");
    EXPECT_EQ(desc(), "ZUCCHINI");
    ASSERT_TRUE(op(opFirstPos, 3, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items ORDER BY Description,SL");
    EXPECT_EQ(desc(), "BREAD");
    ASSERT_TRUE(op(opLastPos, 1, &sql));
    EXPECT_EQ(sql, "SELECT TOP 1 * FROM items ORDER BY SL DESC");
    for (int code : {0, 1, 19, 20, 21, 99}) EXPECT_TRUE(op(static_cast<qint16>(code)));
}

TEST_P(RecordTest, ATypedKeyFindsOnlyTheRowThatHoldsItAndIsShownQuoted)
{
    // Stored as another program may store them, quotes and all.
    QSqlQuery q(gpDBSM_Engine()->db());
    q.prepare("INSERT INTO items VALUES ('TYPED', ?, ?, 0)");
    for (const auto &[sl, id] : {std::pair{"50000001", "O'NEIL"},
                                 {"50000002", "50%"},
                                 {"50000005", "' OR 1=1 --"},
                                 {"50000006", ""}}) {
        q.addBindValue(sl);
        q.addBindValue(QString(id).leftJustified(25));
        ASSERT_TRUE(q.exec()) << q.lastError().text().toStdString();
    }
    const QString nul(QChar(0));
    const struct {
        QString typed, shown;
        QString sl; // of the row found; empty: none
    } cases[] = {
        {"O'NEIL", "O''NEIL", "50000001"},
        {"O''NEIL", "O''''NEIL", ""},
        {"50%", "50%", "50000002"},
        {"' OR 1=1 --", "'' OR 1=1 --", "50000005"},
        {"x' OR '1'='1", "x'' OR ''1''=''1", ""},
        {"ab-2   ", "ab-2   ", "10000107"}, // trailing blanks and the case count for nothing
        {"AB-1", "AB-1", "10000105"},       // stored with leading blanks
        {"A" + nul + "B", "   ", ""},       // shown as blanks, yet no blank Item ID found
    };
    for (const auto &c : cases) {
        gItem.ItemID = c.typed;
        QString sql;
        const bool found = op(opEqual, 2, &sql);
        EXPECT_EQ(found ? sl() : QString(), c.sl) << c.typed.toStdString();
        EXPECT_EQ(sql, "SELECT TOP 1 * FROM items WHERE ltrim(ItemID)='" + c.shown +
                           "' ORDER BY ltrim(ItemID)");
    }
    EXPECT_TRUE(boxes().isEmpty());
    // The connection lost: its prepared statements go with it, or SQLite keeps it open.
    gpDBSM_Engine()->forgetPrepared();
    gpDBSM_Engine()->db().close();
    gItem.ItemID = "O'NEIL";
    EXPECT_FALSE(op(opEqual, 2));
    EXPECT_TRUE(readDataFile("PVSW.log")
                    .endsWith("\r\nSELECT TOP 1 * FROM items WHERE ltrim(ItemID)='O''NEIL' ORDER "
                              "BY ltrim(ItemID)\r\n"));
    EXPECT_EQ(boxes().size(), 1);
}

TEST_P(RecordTest, SelectAndBySqlOpenARowSet)
{
    QString sql = "SELECT * FROM items WHERE Description like '%COLA%' ORDER BY SL";
    ASSERT_TRUE(gfbDBSM_Select(sql, 0, false));
    EXPECT_EQ(gRecordsets[0].RecordCount(), 3);
    gRecordsets[0].MoveNext();
    EXPECT_EQ(gfvDBSM_Field(0, "SL").toString(), "10000107");
    EXPECT_FALSE(gfbDBSM_Select(sql, 0, true)) << "no bind: false, nothing else";
    const QString nul(QChar(0));
    for (const QString &typed : {nul, "CO" + nul + "LA"})
        EXPECT_FALSE(gfbDBSM_Select(
            "SELECT * FROM items WHERE " + gfsDBSM_LikeContains("Description", typed), 0, false));
    sql = "SELECT * FROM items WHERE SL='none'";
    EXPECT_FALSE(gfbDBSM_Select(sql, 0, false));
    sql = "SELECT * FROM items WHERE Qty=0 ORDER BY SL";
    EXPECT_TRUE(gfbDBSM_Record(0, opBySQL, 0, true, false, sql));
    EXPECT_EQ(gRecordsets[0].RecordCount(), 6);
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_P(RecordTest, ExecuteIgnoresStatementErrorsAndLogsTheRest)
{
    EXPECT_EQ(glDBSM_Execute("UPDATE items SET Qty=1 WHERE SL>='3'"), 2);
    EXPECT_EQ(glDBSM_Execute("THIS IS NOT SQL"), 0);
    EXPECT_TRUE(gfbDBSM_AddColumn(0, "Spare", "CHAR(4)"));
    EXPECT_FALSE(gfbDBSM_AddColumn(0, "Spare", "CHAR(4)")) << "an existing column is no error";
    EXPECT_TRUE(gfbDBSM_RenameColumn("items", "Spare", "Extra"));
    EXPECT_FALSE(gfbDBSM_RenameColumn("items", "Spare", "Extra")) << "gone: trapped, no box";
    EXPECT_TRUE(boxes().isEmpty());
    gpDBSM_Engine()->db().close();
    EXPECT_FALSE(gfbDBSM_RenameColumn("items", "Qty", "Quantity"));
    EXPECT_FALSE(QFile::exists(dataPath() + "/PVSW.log")) << "a failed rename is trapped too";
    EXPECT_EQ(glDBSM_Execute("DELETE FROM items"), 0);
    EXPECT_EQ(boxTexts(), QStringList({"An error occurred in executing SQL. View PVSW.log in "
                                       "datapath for details."}));
    const QByteArray log = readDataFile("PVSW.log");
    EXPECT_TRUE(log.contains(" [EXE FAIL]" + QByteArray::number(kErrProvider) + " Description: "));
    EXPECT_TRUE(log.endsWith("\r\nDELETE FROM items\r\n"));
}

TEST_P(RecordTest, OpenTableCreatesAMissingTableWithItsIndexes)
{
    glDBSM_Execute("DROP TABLE items");
    EXPECT_FALSE(gfbDBSM_TableExists("items"));
    EXPECT_TRUE(gfbDBSM_OpenTable(0, false));
    EXPECT_TRUE(gfbDBSM_TableExists("items"));
    EXPECT_FALSE(insert("A", "1") && insert("B", "1")) << "the unique index came along";
    gTables[0].sTableName = "broken";
    gTables[0].sCreateSQL = "CREATE TABLE broken (";
    EXPECT_FALSE(gfbDBSM_OpenTable(0, false));
    const QStringList shown = boxTexts();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].contains("    Open Table Error    "));
}

// Bytes that are no database.
TEST_P(RecordTest, ADamagedFileIsOneBoxPerActionAndOnePerCallOutsideOne)
{
    if (testOnPostgres())
        GTEST_SKIP() << "a file of the embedded engine";
    damageDatabase();
    for (int action = 0; action < 2; ++action) {
        const DbAction a;
        EXPECT_FALSE(op(opFirst));
        EXPECT_FALSE(op(opNext));
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(glDBSM_Execute("UPDATE items SET Qty = 1"), 0);
    }
    EXPECT_EQ(boxTexts(), QStringList(2, kDamagedBox));
    EXPECT_TRUE(readDataFile("PVSW.log").contains("Description: file is not a database"));
    EXPECT_FALSE(op(opEqual));
    EXPECT_FALSE(op(opNext));
    EXPECT_EQ(boxTexts(), QStringList(2, kDamagedBox));
}

TEST_P(RecordTest, ADatabaseFileCutToNothingIsOneBoxPerAction)
{
    if (testOnPostgres())
        GTEST_SKIP() << "a file of the embedded engine";
    ASSERT_TRUE(find("20000001"));
    ASSERT_TRUE(QFile::resize(dataPath() + "/TestDB.db", 0));
    for (int action = 0; action < 2; ++action) {
        const DbAction a;
        EXPECT_FALSE(op(opNext));
        EXPECT_FALSE(op(opFirst));
        EXPECT_EQ(count(), 0);
    }
    EXPECT_EQ(boxTexts(), QStringList(2, kDamagedBox));
    EXPECT_EQ(QFileInfo(dataPath() + "/TestDB.db").size(), 0) << "no table made in the cut file";
}

TEST_P(RecordTest, UpdateAndDeleteFindARowThatHoldsNull)
{
    ASSERT_TRUE(QSqlQuery(gpDBSM_Engine()->db())
                    .exec("INSERT INTO items VALUES ('NULL QTY', '9', 'N', NULL)"));
    EXPECT_FALSE(insert("NULL QTY", "9"));
    EXPECT_EQ(gsInsertError, "Duplicate Key");
    ASSERT_TRUE(insert("NULL QTY", "8") && find("9"));
    gItem.Description = "CHANGED";
    ASSERT_TRUE(op(opUpdate));
    ASSERT_TRUE(find("9"));
    EXPECT_EQ(desc(), "CHANGED");
    ASSERT_TRUE(find("8"));
    EXPECT_EQ(desc(), "NULL QTY");
    ASSERT_TRUE(find("9") && op(opDelete));
    EXPECT_FALSE(find("9"));
    EXPECT_EQ(count(), 7) << "the other rows stay";
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

TEST(Statements, WordForWordAndShownWithTheirValues)
{
    const QStringList K{"A", "B", "C", "D", "E"}, V{"1", "2", "3", "4", "5"};
    EXPECT_EQ(sqlText(dbsm::getNext("T", K.mid(0, 3), V, false)),
              "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='1') > 1 AND A='1' "
              "AND B='2' AND C> '3' OR A='1' AND B> '2' OR A>'1' ORDER BY A,B,C");
    EXPECT_EQ(sqlText(dbsm::getNext("T", K.mid(0, 4), V, false)),
              "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='1') > 1 AND A='1' "
              "AND B>='2' AND C>='3' AND D>'4' OR A>'1' ORDER BY A,B,C,D");
    EXPECT_EQ(sqlText(dbsm::getNext("T", K, V, true)),
              "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='1') > 1 AND A='1' "
              "AND B<='2' AND C<='3' AND D<='4' AND E<'5' OR A<'1' ORDER BY A DESC,B DESC,C "
              "DESC,D DESC,E DESC");
    EXPECT_EQ(sqlText(dbsm::getNext("T", K.mid(0, 2), V, true)),
              "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='1') > 1 AND A='1' "
              "AND B<'2' OR A<'1' ORDER BY A DESC,B DESC");
    EXPECT_EQ(dbsm::getLast("T", K, false, "X"),
              "SELECT TOP 1 * FROM T ORDER BY A DESC,B DESC,C DESC,D DESC,E DESC");
    EXPECT_EQ(sqlText(dbsm::comparison("T", K.mid(0, 2), V, ">")),
              "SELECT TOP 1 * FROM T WHERE A>'1' AND B>'2' ORDER BY A");
    EXPECT_EQ(
        dbsm::trimItemId(QString("SELECT * FROM T WHERE ItemID='ItemID' ORDER BY ItemID,ItemIDX"))
            .shape,
        "SELECT * FROM T WHERE ltrim(ItemID)='ItemID' ORDER BY ltrim(ItemID),ItemIDX");
    // The shown text: each value quoted where its mark stands outside quotes.
    EXPECT_EQ(sqlText({"SELECT * FROM t WHERE a=? AND b='?' AND c>? ESCAPE '\\' AND d=?",
                       {"O'NEIL", "x" + QString(QChar(0)), "?"}}),
              "SELECT * FROM t WHERE a='O''NEIL' AND b='?' AND c>'  ' ESCAPE '\\' AND d='?'");
    EXPECT_EQ(sqlText({"a=? OR b=?", {"1"}}), "a='1' OR b=?") << "a mark without a value stays";
    // Typed pattern characters are escaped, for the server without a connection too.
    EXPECT_EQ(sqlText(SqlServerEngine().likeContains("50%_[a]\\")),
              "like '%50\\%\\_\\[a]\\\\%' ESCAPE '\\'");
    EXPECT_EQ(sqlText(gfsDBSM_LikeContains("Description", "O'NEIL%")),
              "Description like '%O''NEIL\\%%' ESCAPE '\\'");
}

INSTANTIATE_TEST_SUITE_P(Engines, RecordTest, testing_support::kEachEngine,
                         testing_support::engineName);
