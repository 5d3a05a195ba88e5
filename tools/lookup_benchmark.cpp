// Times the lookup list on inventories of several sizes, in the embedded engine
// and on PostgreSQL:
// hk_lookup_benchmark [--engine SQLite|PostgreSQL]... [ROWS...]   (default 10000 100000 1000000)
// Page Down, Page Up, Line Down and a search jump in the Description, S/L and
// Item ID orders; an OFFSET/LIMIT page near the end as the baseline; a wildcard
// search with the memory it takes; then the ratios of the figures.
#include "BenchDatabase.h"
#include "database/DbEngine.h"
#include "database/TableNames.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/model/InventoryLookup.h"
#include "lookup/sm_DataGrid.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/SettingsStore.h"
#include "platform/ui/KeyPreviewForm.h"
#include "platform/ui/MSFlexGrid.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QRandomGenerator>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cstdio>

namespace {

// Boxes are printed: the benchmark runs unattended.
class PrintedDialogs : public platform::Dialogs {
public:
    int msgBox(const QString &text, int, const QString &title) override
    {
        std::printf("  [box] %s: %s\n", qPrintable(title), qPrintable(text));
        return platform::vbOK;
    }
    QString inputBox(const QString &, const QString &, const QString &) override { return {}; }
    QString openFileName(const QString &, const QString &, const QString &) override { return {}; }
    QString saveFileName(const QString &, const QString &, const QString &) override { return {}; }
    QString folderName(const QString &, const QString &) override { return {}; }
};

QString desc(int n)
{
    return QString("ITEM %1 %2").arg(n % 997, 3, 10, QChar('0')).arg(n, 7, 10, QChar('0'));
}

void fill(int rows)
{
    QSqlDatabase &db = gpDBSM_Engine()->db();
    QSqlQuery q(db);
    q.exec("DELETE FROM invt1");
    if (gpDBSM_Engine()->name() == "PostgreSQL") {
        // The same rows as below, made by the server: a million round trips would take minutes.
        // Making them takes longer than the limit of one statement of the program.
        q.exec("SET statement_timeout = 0");
        q.exec(QString("INSERT INTO invt1 (SL, ItemID, Description, SubDescription, VendorCode, "
                       "DeptCode, Price, RecordNum, Status, LocFront, LocBack, Poll) SELECT "
                       "(10000000 + n)::text, (500000000 + n)::text, 'ITEM ' || lpad((n % 997)::"
                       "text, 3, '0') || ' ' || lpad(n::text, 7, '0'), '', 'ACME', 'DEPT', 1.5, "
                       "n, ' ', ' ', ' ', ' ' FROM generate_series(1, %1) n")
                   .arg(rows));
        if (q.lastError().isValid())
            std::printf("  the rows could not be made: %s\n", qPrintable(q.lastError().text()));
        q.exec("ANALYZE");
        return;
    }
    db.transaction();
    q.prepare("INSERT INTO invt1 (SL, ItemID, Description, SubDescription, VendorCode, "
              "DeptCode, Price, RecordNum, Status, LocFront, LocBack, Poll) "
              "VALUES (?,?,?,'','ACME','DEPT',1.5,?,' ',' ',' ',' ')");
    for (int n = 1; n <= rows; ++n) {
        q.addBindValue(QString::number(10000000 + n));
        q.addBindValue(QString::number(500000000 + n).leftJustified(25, ' '));
        q.addBindValue(desc(n).leftJustified(30, ' '));
        q.addBindValue(n);
        q.exec();
    }
    db.commit();
    q.exec("ANALYZE");
}

double timed(int runs, const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < runs; ++i) f();
    return t.nsecsElapsed() / 1e6 / runs;
}

long peakKb()
{
    QFile f("/proc/self/status");
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : f.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    return -1;
}

// Page Down in the Description order and the OFFSET/LIMIT page, per size.
struct Figures {
    double pageDown = 0, offset = 0;
};

Figures measure(int rows, platform::MSFlexGrid &grid)
{
    fill(rows);
    std::printf("%s, %d rows (pages of %d)\n", qPrintable(gpDBSM_Engine()->name()), rows,
                gLookup.giGridRows - 1);
    Figures f;
    const std::pair<int, const char *> orders[] = {
        {colDescription, "Description"}, {colSL, "S/L"}, {colItemID, "Item ID"}};
    for (const auto &[column, name] : orders) {
        giInventorySearch = static_cast<qint16>(column);
        gfbInventoryLookup_setup();
        gpGrid_setup(&grid);
        gfbGrid_load(&grid);
        const double down = timed(20, [&] { gpGrid_scroll(&grid, dirPageDown, nullptr); });
        const double up = timed(10, [&] { gpGrid_scroll(&grid, dirPageUp, nullptr); });
        grid.setRow(gLookup.giGridRows - 1);
        gLookup.giSavedRow = static_cast<qint16>(gLookup.giGridRows - 1);
        const double line = timed(50, [&] { gpGrid_scroll(&grid, dirLineDown, nullptr); });
        const double search = timed(20, [&] {
            const int n = 1 + QRandomGenerator::global()->bounded(rows);
            if (column == colDescription)
                gLookup.gsSearchValue = desc(n);
            else if (column == colSL)
                gLookup.gsSearchValue = QString::number(10000000 + n);
            else
                gLookup.gsSearchValue = QString::number(500000000 + n).leftJustified(25, ' ');
            gfbGrid_search(&grid, nullptr);
        });
        if (column == colDescription)
            f.pageDown = down;
        std::printf("  %-11s page down %.2f ms, page up %.2f ms, line down %.2f ms, search "
                    "%.2f ms\n",
                    name, down, up, line, search);
    }
    QSqlQuery q(gpDBSM_Engine()->db());
    f.offset = timed(5, [&] {
        q.exec(
            QString("SELECT * FROM invt1 ORDER BY Description LIMIT 19 OFFSET %1").arg(rows - 100));
        while (q.next()) {
        }
    });
    std::printf("  baseline: OFFSET/LIMIT page near the end %.2f ms\n", f.offset);
    return f;
}

void wildcard(platform::MSFlexGrid &grid, int rows)
{
    giInventorySearch = colDescription;
    gfbInventoryLookup_setup();
    gpGrid_setup(&grid);
    gfbGrid_load(&grid);
    gLookup.gbWildcard = true;
    gLookup.gsSearchValue = qEnvironmentVariable("HK_WILDCARD", "123");
    const long before = peakKb();
    QElapsedTimer t;
    t.start();
    gpGrid_wildcard(&grid, nullptr);
    std::printf("  wildcard '%%%s%%' over %d rows: %d matches kept, %.0f ms, peak memory %ld kB "
                "(%ld kB before)\n",
                qPrintable(gLookup.gsSearchValue), rows, int(gLookup.gInventoryMatches.size()) - 1,
                t.nsecsElapsed() / 1e6, peakKb(), before);
    gLookup.gbWildcard = false;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    PrintedDialogs dialogs;
    platform::DialogPort::install(&dialogs);
    QStringList args = app.arguments().mid(1);
    const QStringList engines = benchEngines(args);
    QList<int> sizes;
    for (const QString &a : args) sizes << a.toInt();
    if (sizes.isEmpty())
        sizes = {10000, 100000, 1000000};

    QMap<QString, QList<Figures>> figures;
    for (const QString &engine : engines) {
        QTemporaryDir dir;
        std::unique_ptr<PgCluster, void (*)(PgCluster *)> cluster(nullptr, nullptr);
        if (!useBenchDatabase(dir, engine, cluster))
            return 1;
        gfbDBSM_Setup();
        gCommonRecord.setNumber("StoreNumber", 1);
        gCommonRecord.setText("DupID", "1");
        QString sql;
        gfbDBSM_Record(tblCommon, opInsert, 0, false, false, sql);
        gpDBSM_Disconnect();
        if (!gfbDBSM_Setup() || !gfbDBSM_OpenTable(tblInventory, false) ||
            !gfbDBSM_OpenTable(tblUpc, false))
            return 1;
        platform::MSFlexGrid grid;
        gLookup.giGridRows = 20;
        for (int rows : sizes) figures[engine] << measure(rows, grid);
        wildcard(grid, sizes.last());
        gpDBSM_Disconnect();
    }
    std::printf("Ratios (one run on one machine; absolute times vary with its load)\n");
    for (const QString &engine : figures.keys()) {
        const QList<Figures> &f = figures[engine];
        for (int i = 0; i < sizes.size(); ++i)
            std::printf("  %s %d rows: OFFSET/LIMIT page / page down %.1f; page down at %d rows "
                        "/ at %d rows %.2f\n",
                        qPrintable(engine), sizes[i], f[i].offset / f[i].pageDown, sizes[i],
                        sizes.first(), f[i].pageDown / f.first().pageDown);
    }
    if (figures.size() == 2)
        for (int i = 0; i < sizes.size(); ++i)
            std::printf("  %d rows: page down PostgreSQL / SQLite %.1f\n", sizes[i],
                        figures["PostgreSQL"][i].pageDown / figures["SQLite"][i].pageDown);
    return 0;
}
