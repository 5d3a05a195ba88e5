// Times the keyed record operations on the embedded engine and on PostgreSQL:
// hk_db_benchmark [--engine SQLite|PostgreSQL]... [ROWS...]   (default 100000 1000000)
// For each engine and size: Get Equal, Get Next over 10,000 rows, Get Previous
// on a two-segment key over 10,000 rows, and the query plan of the Get Next step;
// then the engines' figures side by side.
#include "BenchDatabase.h"
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "platform/AppInfo.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMap>
#include <QRandomGenerator>
#include <QSettings>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cstdio>
#include <optional>

namespace {

QString gDesc, gSL;

// The benchmark's own table, file 0, and its keys.
constexpr qint16 kItems = 0, kKeySL = 1, kKeyDescSL = 2;

QString fixed(const QString &s, int w)
{
    return s.leftJustified(w, ' ', true);
}

void keyValues(qint16, qint16 iKey)
{
    if (iKey == kKeySL)
        gpDBSM_SetKey(kItems, 1, {{1, gSL}});
    else
        gpDBSM_SetKey(kItems, 2, {{0, gDesc}, {1, gSL}});
}

void rowToRecord(qint16)
{
    gDesc = fixed(gfvDBSM_Field(kItems, "Description").toString(), 30);
    gSL = fixed(gfvDBSM_Field(kItems, "SL").toString(), 8);
}

QString sl(int n)
{
    return QString("%1").arg(n, 8, 10, QChar('0'));
}
QString desc(int n)
{
    return fixed(QString("ITEM %1").arg(n / 3, 7, 10, QChar('0')), 30);
}

void fill(int rows)
{
    QSqlDatabase &db = gpDBSM_Engine()->db();
    QSqlQuery q(db);
    q.exec("DROP TABLE IF EXISTS items");
    gpDBSM_Engine()->forgetPrepared();
    for (const QString &part : gpDBSM_Engine()
                                   ->translate("CREATE TABLE items (Description CHAR(30), SL "
                                               "CHAR(8), Qty INT)")
                                   .split('\n'))
        q.exec(part);
    if (gpDBSM_Engine()->name() == "PostgreSQL") {
        // The same rows as below, made by the server: a million round trips would take minutes.
        // Making them takes longer than the limit of one statement of the program.
        q.exec("SET statement_timeout = 0");
        q.exec(QString("INSERT INTO items SELECT rpad('ITEM ' || lpad((n / 3)::text, 7, '0'), 30), "
                       "lpad(n::text, 8, '0'), n FROM generate_series(0, %1) n")
                   .arg(rows - 1));
    } else {
        db.transaction();
        q.prepare("INSERT INTO items VALUES(?,?,?)");
        for (int n = 0; n < rows; ++n) {
            q.addBindValue(desc(n)); // three rows share each description
            q.addBindValue(sl(n));
            q.addBindValue(n);
            q.exec();
        }
        db.commit();
    }
    for (const char *index :
         {"CREATE UNIQUE INDEX key1 ON items (SL)", "CREATE INDEX key2 ON items (Description,SL)"})
        q.exec(gpDBSM_Engine()->translate(index));
    q.exec("ANALYZE");
}

// With `perAction` above 0 the steps go in user actions of that many, as a page
// move makes them; otherwise each stands alone.
double perStep(int steps, qint16 op, qint16 key, int perAction = 0)
{
    QElapsedTimer t;
    t.start();
    int done = 0;
    QString sql;
    std::optional<DbAction> action;
    for (; done < steps; ++done) {
        if (perAction > 0 && done % perAction == 0) {
            action.reset();
            action.emplace();
        }
        sql.clear();
        if (!gfbDBSM_Record(kItems, op, key, false, false, sql))
            break;
    }
    return t.nsecsElapsed() / 1e3 / std::max(done, 1);
}

// The plan of a two-segment Get Next as the engine prepares it: the pair
// comparison, which takes the first segment's value once; the values written in.
void plan(const SqlRead &read)
{
    const bool server = gpDBSM_Engine()->name() == "PostgreSQL";
    const QString shape = gpDBSM_Engine()->translate(read.shape);
    const QStringList &v = read.values;
    const SqlRead prepared(shape, shape.count('?') == 2 ? QStringList{v[0], v[2]} : v);
    QSqlQuery q(gpDBSM_Engine()->db());
    q.exec((server ? "EXPLAIN " : "EXPLAIN QUERY PLAN ") + sqlText(prepared));
    while (q.next()) std::printf("    plan: %s\n", qPrintable(q.value(server ? 0 : 3).toString()));
}

// The figures of one engine and size: Get Equal, then Get Next on key 1.
struct Figures {
    double equal = 0, next = 0, pageNext = 0;
};

Figures measure(int rows)
{
    fill(rows);
    gfbDBSM_OpenTable(kItems, false);
    std::printf("%s, %d rows\n", qPrintable(gpDBSM_Engine()->name()), rows);
    Figures f;
    QElapsedTimer t;
    t.start();
    const int lookups = 2000;
    for (int i = 0; i < lookups; ++i) {
        gSL = sl(QRandomGenerator::global()->bounded(rows));
        QString sql;
        gfbDBSM_Record(kItems, opEqual, kKeySL, false, false, sql);
    }
    f.equal = t.nsecsElapsed() / 1e3 / lookups;
    std::printf("  Get Equal on key 1: %.1f us per read\n", f.equal);

    gSL = sl(rows / 2);
    QString sql;
    gfbDBSM_Record(kItems, opEqual, kKeySL, false, false, sql);
    f.next = perStep(10000, opNext, kKeySL);
    std::printf("  Get Next on key 1 from the middle, 10,000 steps: %.1f us per step\n", f.next);
    gSL = sl(rows / 2);
    gfbDBSM_Record(kItems, opEqual, kKeySL, false, false, sql);
    f.pageNext = perStep(10000, opNext, kKeySL, 19);
    std::printf("  the same in actions of 19 steps (a page move, read ahead): %.1f us per step\n",
                f.pageNext);
    gSL = sl(rows - 20000);
    gfbDBSM_Record(kItems, opEqual, kKeySL, false, false, sql);
    std::printf("  Get Next on the two-segment key near the end, 10,000 steps: %.1f us per "
                "step\n",
                perStep(10000, opNext, kKeyDescSL));
    gSL = sl(rows - 1);
    gfbDBSM_Record(kItems, opEqual, kKeySL, false, false, sql);
    std::printf("  Get Previous on the two-segment key from the end, 10,000 steps: %.1f us "
                "per step\n",
                perStep(10000, opPrevious, kKeyDescSL));
    keyValues(kItems, kKeyDescSL);
    plan(dbsm::getNext("items", {"Description", "SL"},
                       {gvKeyValue[1].toString(), gvKeyValue[2].toString()}, false));
    return f;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const QStringList engines = benchEngines(args);
    QList<int> sizes;
    for (const QString &a : args) sizes << a.toInt();
    if (sizes.isEmpty())
        sizes = {100000, 1000000};

    QMap<QString, QList<Figures>> figures;
    for (const QString &engine : engines) {
        QTemporaryDir dir;
        std::unique_ptr<PgCluster, void (*)(PgCluster *)> cluster(nullptr, nullptr);
        if (!useBenchDatabase(dir, engine, cluster))
            return 1;
        giFileCount = 1;
        if (!gfbDBSM_Connect())
            return 1;
        gpDBSM_OpenConnection("");
        gTables[kItems].sTableName = "items";
        gpDBSM_RegisterDispatch({keyValues, rowToRecord, nullptr, nullptr});
        for (int rows : sizes) figures[engine] << measure(rows);
        gpDBSM_Disconnect();
    }
    std::printf("Ratios (medians of a shared machine vary; compare within one run)\n");
    for (int i = 0; i < sizes.size(); ++i) {
        if (figures.size() == 2)
            std::printf("  %d rows: PostgreSQL / SQLite  Get Equal %.1f, Get Next %.1f, in a page "
                        "%.1f\n",
                        sizes[i], figures["PostgreSQL"][i].equal / figures["SQLite"][i].equal,
                        figures["PostgreSQL"][i].next / figures["SQLite"][i].next,
                        figures["PostgreSQL"][i].pageNext / figures["SQLite"][i].pageNext);
        for (const QString &engine : figures.keys())
            std::printf("  %s %d rows: Get Next alone / in a page %.1f\n", qPrintable(engine),
                        sizes[i], figures[engine][i].next / figures[engine][i].pageNext);
        for (const QString &engine : figures.keys())
            std::printf("  %s: %d rows / %d rows  Get Equal %.2f, Get Next %.2f\n",
                        qPrintable(engine), sizes[i], sizes.first(),
                        figures[engine][i].equal / figures[engine][0].equal,
                        figures[engine][i].next / figures[engine][0].next);
    }
    return 0;
}
