// Times the lookup list on inventories of several sizes in the embedded engine:
// hk_lookup_benchmark [ROWS...]   (default 10000 100000 1000000)
// Page Down, Page Up, Line Down and a search jump in the Description, S/L and
// Item ID orders; an OFFSET/LIMIT page near the end as the baseline; and a
// wildcard search with the memory it takes.
#include "BenchDatabase.h"
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "database/zelDBSM_Inventory.h"
#include "hotkeys/hkeyGlobal.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/LookupState.h"
#include "lookup/sm_DataGrid.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/KeyPreviewForm.h"
#include "platform/MSFlexGrid.h"
#include "platform/SettingsStore.h"
#include "settings/clsDataPath.h"
#include "shell/hkeyDBSM_Setup.h"
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QSettings>
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

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    PrintedDialogs dialogs;
    platform::DialogPort::install(&dialogs);
    QTemporaryDir dir;
    useBenchDatabase(dir);
    gfbDBSM_Setup();
    gCommonRecord.setNumber("StoreNumber", 1);
    gCommonRecord.setText("DupID", "1");
    QString sql;
    gfbDBSM_Record(0, opInsert, 0, false, false, sql);
    gpDBSM_Disconnect();
    if (!gfbDBSM_Setup() || !gfbDBSM_OpenTable(1, false) || !gfbDBSM_OpenTable(2, false))
        return 1;

    QList<int> sizes;
    for (int i = 1; i < argc; ++i) sizes << QString(argv[i]).toInt();
    if (sizes.isEmpty())
        sizes = {10000, 100000, 1000000};
    platform::MSFlexGrid grid;
    giGridRows = 20;
    for (int rows : sizes) {
        fill(rows);
        std::printf("%d rows (pages of %d)\n", rows, giGridRows - 1);
        const std::pair<int, const char *> orders[] = {
            {colDescription, "Description"}, {colSL, "S/L"}, {colItemID, "Item ID"}};
        for (const auto &[column, name] : orders) {
            giInventorySearch = static_cast<qint16>(column);
            gfbInventoryLookup_setup();
            gpGrid_setup(&grid);
            gfbGrid_load(&grid);
            const double down = timed(20, [&] { gpGrid_scroll(&grid, dirPageDown, nullptr); });
            const double up = timed(10, [&] { gpGrid_scroll(&grid, dirPageUp, nullptr); });
            grid.setRow(giGridRows - 1);
            giSavedRow = static_cast<qint16>(giGridRows - 1);
            const double line = timed(50, [&] { gpGrid_scroll(&grid, dirLineDown, nullptr); });
            const double search = timed(20, [&] {
                const int n = 1 + QRandomGenerator::global()->bounded(rows);
                if (column == colDescription)
                    gsSearchValue = desc(n);
                else if (column == colSL)
                    gsSearchValue = QString::number(10000000 + n);
                else
                    gsSearchValue = QString::number(500000000 + n).leftJustified(25, ' ');
                gfbGrid_search(&grid, nullptr);
            });
            std::printf("  %-11s page down %.2f ms, page up %.2f ms, line down %.2f ms, search "
                        "%.2f ms\n",
                        name, down, up, line, search);
        }
        QSqlQuery q(gpDBSM_Engine()->db());
        const double offset = timed(5, [&] {
            q.exec(QString("SELECT * FROM invt1 ORDER BY Description LIMIT 19 OFFSET %1")
                       .arg(rows - 100));
            while (q.next()) {
            }
        });
        std::printf("  baseline: OFFSET/LIMIT page near the end %.2f ms\n", offset);
    }
    giInventorySearch = colDescription;
    gfbInventoryLookup_setup();
    gpGrid_setup(&grid);
    gfbGrid_load(&grid);
    gbWildcard = true;
    gsSearchValue = qEnvironmentVariable("HK_WILDCARD", "123");
    const long before = peakKb();
    QElapsedTimer t;
    t.start();
    gpGrid_wildcard(&grid, nullptr);
    std::printf("wildcard '%%%s%%' over %d rows: %d matches kept, %.0f ms, peak memory %ld kB (%ld "
                "kB before)\n",
                qPrintable(gsSearchValue), sizes.last(), int(gInventoryMatches.size()) - 1,
                t.nsecsElapsed() / 1e6, peakKb(), before);
    gpDBSM_Disconnect();
    return 0;
}
