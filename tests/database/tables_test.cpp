#include "database/UpcRows.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_InventoryBulk.h"
#include "hotkeys/hkeyGlobal.h"
#include "shell/hkeyDBSM_Interface.h"
#include "support/StoreDb.h"
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>

using testing_support::StoreDbTest;

namespace {

class StoreTablesTest : public StoreDbTest, public testing_support::OnEachEngine {};

using testing_support::testOnPostgres;

QStringList columnsOf(const QString &table)
{
    QStringList names;
    const QSqlRecord columns = gpDBSM_Engine()->db().record(table);
    for (int i = 0; i < columns.count(); ++i)
        names << gpDBSM_Engine()->columnName(columns.fieldName(i));
    return names;
}

int indexCount(const QString &table)
{
    QSqlQuery q(gpDBSM_Engine()->db());
    // The suite's indexes; the engine's own index on ltrim(ItemID) is not one of them.
    if (testOnPostgres())
        q.exec("SELECT COUNT(*) FROM pg_indexes WHERE tablename = '" + table.toLower() +
               "' AND indexname NOT LIKE '%_ltrim'");
    else
        q.exec("SELECT COUNT(*) FROM sqlite_master WHERE type='index' AND tbl_name='" + table +
               "' AND name NOT LIKE '%_ltrim'");
    return q.next() ? q.value(0).toInt() : -1;
}

// Runs Transact-SQL as the engine translates it, as another program of the suite would.
bool runTranslated(const QString &statement)
{
    QSqlQuery q(gpDBSM_Engine()->db());
    for (const QString &part : gpDBSM_Engine()->translate(statement).split('\n')) {
        if (!q.exec(part))
            return false;
    }
    return true;
}

} // namespace

TEST_P(StoreTablesTest, CreateStatementsStandAsTheSuiteWritesThem)
{
    seedCommon(1);
    ASSERT_TRUE(setup());
    gpUpc_Create(2);
    EXPECT_EQ(gTables[2].sCreateSQL, "Create Table UPC1 (SL CHAR (8) NOT NULL, UPC CHAR (15) NOT "
                                     "NULL, LABEL CHAR (30), POLL CHAR (1),InvUID INTEGER);");
    EXPECT_EQ(gTables[2].sIndexSQL,
              "Create Index idx_0 On UPC1 (SL);Create UNIQUE  CLUSTERED Index idx_1 On UPC1 (UPC, "
              "SL);Create UNIQUE Index idx_2 On UPC1 (UPC);Create Index idx_3 On UPC1 (Poll);"
              "Create Index idx_4 On UPC1 (InvUID);");
    gpCommon_Create(0);
    EXPECT_TRUE(gTables[0].sCreateSQL.startsWith(
        "Create Table COMMON (ProgramVersion CHAR (10), DupID CHAR (1), Cname CHAR (40), "));
    EXPECT_TRUE(gTables[0].sCreateSQL.endsWith(
        "IncrementItems  CHAR (1), CountryID SMALLINT, Email CHAR (35), Spare CHAR (65));"));
    EXPECT_EQ(gTables[0].sIndexSQL, "Create UNIQUE Index idx_0 On COMMON (DupID);");
    gpInventory_Create(1);
    EXPECT_TRUE(gTables[1].sCreateSQL.startsWith(
        "Create Table invt1 (SL CHAR (8) NOT NULL DEFAULT  ' ', ItemID CHAR (25) NOT NULL "
        "DEFAULT  ' ', Description CHAR (30) DEFAULT  ' ', "));
    EXPECT_TRUE(gTables[1].sCreateSQL.endsWith(
        "BPL2 INTEGER, PenLiqorUnit SMALLINT DEFAULT 0, BPL3 INTEGER DEFAULT 0);"));
    EXPECT_TRUE(gTables[1].sIndexSQL.startsWith(
        "Create UNIQUE CLUSTERED Index idx_0 On invt1 (RecordNum);Create UNIQUE  Index idx_1 On "
        "invt1 (SL);"));
    EXPECT_TRUE(gTables[1].sIndexSQL.endsWith("Create UNIQUE Index idx_12 on invt1 (Poll, "
                                              "RecordNum);"));
    EXPECT_EQ(indexCount("UPC1"), 5);
}

TEST_P(StoreTablesTest, StoreIdentityComesFromTheCommonRow)
{
    seedCommon(0, "N");
    ASSERT_TRUE(setup());
    EXPECT_EQ(gsStoreNumber, "0");
    EXPECT_TRUE(gbMultiStore) << "store 0 is multi-store whatever MultiStore says";
    EXPECT_TRUE(gfbDBSM_TableExists("UPC0"));
    EXPECT_TRUE(gfbDBSM_Open());

    glDBSM_Execute("UPDATE COMMON SET StoreNumber = 2, MultiStore = 'h'");
    ASSERT_TRUE(setup());
    EXPECT_EQ(gsStoreNumber, "2");
    EXPECT_TRUE(gbMultiStore);

    glDBSM_Execute("UPDATE COMMON SET StoreNumber = NULL");
    EXPECT_FALSE(setup());
    const QStringList shown = boxTexts();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].startsWith("The store number in the COMMON table is empty."));
}

TEST_P(StoreTablesTest, EveryInventoryKeyWalksInItsOwnOrder)
{
    openStore();
    for (const auto &[sl, id, desc, vendor] : {std::tuple{"00001000", "500", "MILK 1L", "DAIRYCO"},
                                               {"00000200", "  40", "bread rye", "BAKER"},
                                               {"00003000", "ABC-1", "APPLE", "FRUITCO"},
                                               {"00000040", "ZZ", "MILK 2L", "DAIRYCO"},
                                               {"00000500", "7", "CHEESE", "DAIRYCO"}})
        addItem(sl, id, desc, 1, vendor);
    QString sql;
    const auto read = [&sql](qint16 op, qint16 key) {
        return gfbDBSM_Record(tblInventory, op, key, false, false, sql);
    };
    for (qint16 key = 0; key <= 12; ++key) {
        int walked = 0;
        for (bool found = read(opFirstPos, key); found && walked < 10; found = read(opNext, key))
            ++walked;
        EXPECT_EQ(walked, 5) << "key " << key;
    }
    ASSERT_TRUE(read(opFirstPos, 3));
    EXPECT_EQ(gInventoryRecord.text("Description").trimmed(), "APPLE");
    ASSERT_TRUE(read(opNext, 3));
    EXPECT_EQ(gInventoryRecord.text("Description").trimmed(), "bread rye");
    gInventoryRecord.setText("ItemID", "   40");
    sql.clear();
    ASSERT_TRUE(read(opEqual, 2));
    EXPECT_EQ(gInventoryRecord.text("SL"), "00000200");
    EXPECT_TRUE(sql.contains("ltrim(ItemID)='40 "));
}

TEST_P(StoreTablesTest, InventoryHelpersAndFieldRules)
{
    openStore();
    const int n = addItem("00001234", "CAKE-1", "CHOCOLATE CAKE", 4.5);
    // A description wider than the field, as another program may leave it: a
    // server refuses it in the column as the suite makes it.
    if (testOnPostgres()) {
        ASSERT_TRUE(runTranslated("ALTER TABLE invt1 ALTER COLUMN Description CHAR(60)"));
    }
    glDBSM_Execute("UPDATE invt1 SET QTYINPACK = 0, BPL3 = NULL, Description = 'A VERY LONG "
                   "DESCRIPTION THAT IS WIDER THAN THIRTY'");
    EXPECT_EQ(glInventory_BySL("00001234", false), n);
    EXPECT_EQ(gInventoryRecord.number("QTYINPACK"), 1);
    EXPECT_EQ(gInventoryRecord.number("BPL3"), 0);
    EXPECT_EQ(gInventoryRecord.number("Price"), 4.5);
    EXPECT_EQ(gInventoryRecord.text("Description"), "A VERY LONG DESCRIPTION THAT I");
    EXPECT_EQ(glInventory_BySL("nothing", false), 0);
    EXPECT_EQ(glInventory_BySL("~SCOUPN  ", true), 0);
    EXPECT_EQ(glInventory_BySL("0", true), 0);
    EXPECT_EQ(glInventory_BySL("x' OR '1'='1", true), 999999) << "a quote stays in the value";
    EXPECT_TRUE(gfbInventory_ByRecordNum(n)) << n;
    EXPECT_FALSE(gfbInventory_ByRecordNum(n + 1));

    gUpcRecord.clear();
    gUpcRecord.setText("SL", "00001234");
    gUpcRecord.setText("UPC", "012345678905");
    gUpcRecord.setText("LABEL", "Grandma's cake");
    gUpcRecord.setNumber("InvUID", n);
    QString sql;
    ASSERT_TRUE(gfbDBSM_Record(2, opInsert, 0, false, false, sql));
    EXPECT_TRUE(sql.startsWith("INSERT INTO UPC1 VALUES('00001234','012345678905   ','Grandma s"));
    gUpcRecord.setText("UPC", "012345678905");
    sql.clear();
    ASSERT_TRUE(gfbDBSM_Record(2, opEqual, 2, false, false, sql));
    EXPECT_EQ(gUpcRecord.text("LABEL").trimmed(), "Grandma s cake");
}

TEST_P(StoreTablesTest, AnOldInventoryIsBroughtUpToDateWithItsRowsIntact)
{
    seedCommon(1);
    QStringList old;
    for (const ColumnSpec &c : gInventoryRecord.columns()) {
        if (c.name == "PenLiqorUnit" || c.name == "BPL3")
            continue;
        QString name = c.name, def = c.definition;
        if (name == "ItemID")
            def = "CHAR (15) NOT NULL DEFAULT  ' '";
        if (name == "NeverOrder")
            name = "Flg2";
        if (name == "NotUsed")
            name = "PriceFactor", def = "CHAR(6) DEFAULT  ' '";
        else if (name == "PriceFactor")
            name = "Spare1";
        old << name + ' ' + def;
    }
    ASSERT_TRUE(runTranslated("Create Table invt1 (" + old.join(", ") + ")"));
    ASSERT_TRUE(runTranslated("Create UNIQUE  Index idx_2 On invt1 (ItemID)"));
    ASSERT_TRUE(setup());
    EXPECT_EQ(columnsOf("invt1").size(), old.size()) << "an empty old table is left as it is";
    QSqlQuery q(gpDBSM_Engine()->db());
    for (int r = 1; r <= 3; ++r)
        ASSERT_TRUE(q.exec(QString("INSERT INTO invt1 (SL, ItemID, Description, PriceFactor, Flg2, "
                                   "RecordNum) VALUES ('0000000%1', 'ITEM%1          ', 'OLD ITEM "
                                   "%1', 'PF%1', 'Y', %1)")
                               .arg(r)));

    ASSERT_TRUE(setup());
    const QStringList now = columnsOf("invt1");
    ASSERT_EQ(now.size(), 57);
    EXPECT_EQ(QStringList({now[16], now[47], now[50], now[55], now[56]}),
              QStringList({"NotUsed", "NeverOrder", "PriceFactor", "PenLiqorUnit", "BPL3"}));
    EXPECT_EQ(indexCount("invt1"), 13);

    ASSERT_TRUE(gfbDBSM_Open());
    EXPECT_TRUE(gfbInventory_ByRecordNum(2));
    EXPECT_EQ(gInventoryRecord.text("Description").trimmed(), "OLD ITEM 2");
    EXPECT_EQ(gInventoryRecord.text("PriceFactor").trimmed(), "PF2") << "the old value moved";
    EXPECT_EQ(gInventoryRecord.text("NeverOrder"), " ");
    EXPECT_EQ(gfvDBSM_Field(1, "ItemID").toString().size(), 25);

    // A second start finds nothing left to do.
    ASSERT_TRUE(setup());
    EXPECT_EQ(columnsOf("invt1"), now);
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_P(StoreTablesTest, BarCodesOfManyItemsAreTheOnesTheirOwnReadsFind)
{
    openStore();
    // In the order they are added: the first of an S/L is the one that shows.
    for (const auto &[sl, upc] : {std::pair{"00000001", "  012345678905"},
                                  {"00000002", "111"},
                                  {"00000002", "222"},
                                  {"00000003", "D12"},
                                  {"00000003", "333"},
                                  {"ABC", "0042"},
                                  {"O'1", "I7"},
                                  {"O'2", "777"}})
        ASSERT_TRUE(testing_support::addUpc(sl, upc));
    const struct {
        QString sl, shown;
    } cases[] = {{"00000001", "012345678905"},
                 {"00000002", "111"},
                 {"00000003", ""},
                 {"00000009", ""},
                 {"abc     ", "0042"},
                 {"O 1     ", ""},
                 {"O 2     ", "777"}, // a quote is stored as a blank
                 {"O'2     ", ""},
                 {QString::fromUtf16(u"0\u0000", 2), ""}};
    QStringList sls;
    for (const auto &c : cases) sls << c.sl;
    QHash<QString, QString> barCodes;
    {
        DbAction action;
        ASSERT_TRUE(gfbUpc_BarCodes(sls, barCodes));
    }
    EXPECT_EQ(barCodes.size(), std::size(cases));
    for (const auto &c : cases) {
        EXPECT_EQ(barCodes.value(c.sl, "missing"), c.shown) << c.sl.toStdString();
        // The read by "=" on the S/L key finds the same first row.
        gUpcRecord.setText("SL", c.sl);
        QString sql;
        const bool found = gfbDBSM_Record(tblUpc, opEqual, upcKeySL, false, false, sql);
        const QString upc = gUpcRecord.text("UPC");
        const bool link = upc.startsWith('D') || upc.startsWith('I');
        EXPECT_EQ(found && !link ? upc.trimmed() : QString(), c.shown) << c.sl.toStdString();
    }
    EXPECT_TRUE(gfbUpc_BarCodes({}, barCodes));
    EXPECT_TRUE(barCodes.isEmpty());
}

// Three batches of codes, the items among them at the first place, in the middle
// batch and at the last, which only the padded last batch holds; Item IDs compared
// as the keyed reads compare them, and a quote is only ever a value.
TEST_P(StoreTablesTest, BulkReadsFindEveryItemInEveryBatchAsTheKeyedReadsDo)
{
    openStore();
    addItem("00012345", "COF-1", "COFFEE");
    addItem("00020010", "CAKE-1", "CAKE");
    addItem("00030000", "TEA-1%", "TEA");
    QStringList sls, ids;
    for (int i = 0; i < 1201; ++i) {
        sls << QString("9%1").arg(i, 7, 10, QChar('0'));
        ids << QString("NONE-%1'").arg(i);
    }
    sls[0] = "00012345";
    sls[700] = "00020010";
    sls[1200] = "00030000";
    ids[0] = " cof-1 ";
    ids[700] = "tea-1%";
    ids[1200] = "O'NE%";
    const DbAction action;
    QHash<QString, InventoryBulkItem> bySL, byId;
    ASSERT_TRUE(gfbInventory_ReadMany(sls, false, bySL) && gfbInventory_ReadMany(ids, true, byId));
    EXPECT_EQ(bySL.size(), 3);
    for (const char *sl : {"00012345", "00020010", "00030000"}) EXPECT_EQ(bySL.value(sl).sl, sl);
    EXPECT_EQ(bySL.value("00020010").description, "CAKE");
    EXPECT_EQ(byId.size(), 2);
    EXPECT_EQ(byId.value("COF-1").itemId, "COF-1");
    EXPECT_EQ(byId.value("TEA-1%").description, "TEA");
    EXPECT_FALSE(gfbDBSM_ActionFailed());
}

INSTANTIATE_TEST_SUITE_P(Engines, StoreTablesTest, testing_support::kEachEngine,
                         testing_support::engineName);
