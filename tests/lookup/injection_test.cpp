#include "database/DbEngine.h"
#include "database/UpcRows.h"
#include "lookup/LookupScreen.h"
#include "screens/frmHotKey_Define.h"
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <sqlite3.h>

using testing_support::LookupScreenFixture;

namespace {

// Text that a user or another program may put where the program builds SQL.
const QStringList kPayloads = {
    // Quotes that end the value and statements after them
    "''' OR 1=1 --", "'''; DROP TABLE INVT1; --", "6''", "'", "''", "' OR '1'='1", "' OR 1=1 --",
    "'; DELETE FROM invt1; --", "x' UNION SELECT * FROM COMMON --", "') OR ('a'='a",
    // Pattern characters
    "%", "_", "[a]", "[%]", "%' --", "50%_OFF",
    // Backslashes
    "\\", "\\'", "'\\", "\\\\' OR 1=1 --", "a\\%b",
    // Letters and quotes beyond ASCII
    "\u00c9CLAIR'S", "\u65e5\u672c'\u8a9e", "\u2018SMART\u2019 QUOTES", "\u02bc OR 1=1 --",
    "\uff07 OR 1=1 --",
    // Other syntax
    "1; DROP TABLE COMMON", "\" OR \"\"=\"", "*/ OR /*", "ItemID' OR ltrim(ItemID)='",
    "LEFT(upc,1)='0' OR '", "^[!]-"};

// Every statement that reaches the embedded engine, as it reaches it. The server
// keeps its own log: there the tests hold to the tables and PVSW.log alone.
struct StatementTrace {
    StatementTrace() { trace(SQLITE_TRACE_STMT, &StatementTrace::traced); }
    ~StatementTrace() { trace(0, nullptr); }
    void trace(unsigned mask, int (*callback)(unsigned, void *, void *, void *))
    {
        if (!testing_support::testOnPostgres())
            sqlite3_trace_v2(
                *static_cast<sqlite3 *const *>(gpDBSM_Engine()->db().driver()->handle().data()),
                mask, callback, this);
    }
    static int traced(unsigned, void *self, void *, void *sql)
    {
        static_cast<StatementTrace *>(self)->statements
            << QString::fromUtf8(static_cast<const char *>(sql));
        return 0;
    }
    QStringList statements;
};

// A statement with every quoted value and every number made one mark: what is
// left is its shape.
QString shapeOf(const QString &sql)
{
    static const QRegularExpression value("'(?:[^']|'')*'"), number("\\b\\d+\\b");
    return QString(sql).replace(value, "'?'").replace(number, "#");
}

QString snapshot()
{
    QSqlQuery tables(gpDBSM_Engine()->db());
    if (testing_support::testOnPostgres())
        tables.exec("SELECT c.relname, CASE c.relkind WHEN 'r' THEN 'CREATE TABLE' ELSE "
                    "pg_get_indexdef(c.oid) END FROM pg_class c JOIN pg_namespace n ON n.oid = "
                    "c.relnamespace WHERE n.nspname = current_schema() ORDER BY c.relname");
    else
        tables.exec("SELECT name, sql FROM sqlite_master ORDER BY name");
    QString all;
    while (tables.next()) {
        all += tables.value(1).toString() + '\n';
        if (!tables.value(1).toString().startsWith("CREATE TABLE"))
            continue;
        QSqlQuery rows(gpDBSM_Engine()->db());
        rows.exec("SELECT * FROM " + tables.value(0).toString() +
                  (testing_support::testOnPostgres() ? " ORDER BY ctid" : " ORDER BY rowid"));
        while (rows.next())
            for (int i = 0; i < rows.record().count(); ++i) all += rows.value(i).toString() + '|';
    }
    return all;
}

class InjectionTest : public LookupScreenFixture {
protected:
    void seed() override
    {
        LookupScreenFixture::seed();
        ASSERT_TRUE(testing_support::addUpc("00012345", "0123", 1));
        ASSERT_TRUE(testing_support::addUpc("00020010", "0456", 3));
    }

    // Types each value into the search box in every order, and searches each
    // with the wildcard; returns the shapes of the statements that ran.
    QSet<QString> searchAll(const QStringList &values)
    {
        QSet<QString> shapes;
        onLookup([&](frm_Lookup &f) {
            StatementTrace trace;
            for (int column :
                 {colDescription, colSubDesc, colSL, colItemID, colUPC, colDept, colVendor}) {
                f.gfbSortColumn_select(column);
                for (const QString &value : values) {
                    f.txtEditValue->setText(value);
                    f.ckWildcard->setChecked(true);
                    f.txtEditValue->setText(value + ' ');
                    f.cmdSearch_Click();
                    f.cmdEdit_Click();
                }
            }
            for (const QString &s : trace.statements) shapes << shapeOf(s);
            f.cmdExit_Click();
        });
        gfsInventory_find("");
        return shapes;
    }

    void expectOnlyListBoxes()
    {
        static const QStringList listTexts = {"No matches found", "End of List", "Top of List",
                                              "Error No Data found in File"};
        for (const auto &b : boxes())
            EXPECT_TRUE(listTexts.contains(b.text)) << b.text.toStdString();
        EXPECT_FALSE(QFile::exists(dataPath() + "/PVSW.log")) << "no statement failed";
    }
};

} // namespace

TEST_F(InjectionTest, TypedValuesNeverChangeAStatementOrATable)
{
    const QSet<QString> known = searchAll(
        {"", "A", "COF", "COFFEE LARGE", "ZZZZ", "!", "^", "~", "0", "5", "1234567.8", "\xc3\x89"});
    const QString before = snapshot();
    for (const QString &payload : kPayloads) {
        const QSet<QString> shapes = searchAll({payload});
        for (const QString &shape : shapes)
            EXPECT_TRUE(known.contains(shape))
                << "payload " << payload.toStdString() << " ran " << shape.toStdString();
    }
    EXPECT_EQ(snapshot(), before);
    expectOnlyListBoxes();
}

TEST_F(InjectionTest, TheKeyDialogReadsBackEveryItemIdAsStored)
{
    QSqlQuery insert(gpDBSM_Engine()->db());
    insert.prepare("INSERT INTO invt1 (SL, ItemID, Description, Status, RecordNum) "
                   "VALUES (?, ?, ?, ' ', ?)");
    QStringList ids = kPayloads;
    // A server's collation ignores the width of a character, as SQL Server's
    // default does: the full-width quote is the same key as the plain one there.
    if (testing_support::testOnPostgres())
        ids.removeAll("\uff07 OR 1=1 --");
    for (int i = 0; i < ids.size(); ++i) {
        ids[i] = ids[i].left(25);
        insert.addBindValue(QString::number(90000000 + i));
        insert.addBindValue(ids[i].leftJustified(25, ' '));
        insert.addBindValue(QString("PAYLOAD %1").arg(i, 2, 10, QChar('0')));
        insert.addBindValue(100 + i);
        ASSERT_TRUE(insert.exec()) << insert.lastError().text().toStdString();
    }
    const QString before = snapshot();
    giLinkOption = 1; // the key sells by Item ID
    for (int i = 0; i < ids.size(); ++i) {
        onLookup([i](frm_Lookup &f) {
            f.gfbSortColumn_select(colSL);
            f.txtEditValue->setText(
                QString("9000%1.%2").arg(i / 10, 3, 10, QChar('0')).arg(i % 10));
            f.cmdAction_Click(0);
        });
        frmHotKey_Define key;
        key.Form_Load();
        key.cmdFind_Click(0);
        EXPECT_EQ(key.txtEdit[1]->text(), ids[i].trimmed()) << "item " << i;
        EXPECT_EQ(key.txtEdit[0]->text(), QString("PAYLOAD %1").arg(i, 2, 10, QChar('0')));
    }
    EXPECT_EQ(snapshot(), before);
    expectOnlyListBoxes();
}
