#include "database/ZelDBSM_MSDE.h"
#include "common/TextFile.h"
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE_internal.h"
#include "platform/AppInfo.h"
#include "platform/Dialogs.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>

std::vector<TableDescriptor> gTables;
std::vector<Recordset> gRecordsets;
QString gsDBName, gsServer, gsDBUser, gsDBPassword;
bool gbConnected = false;
qint16 giFileCount = 0;

namespace {

std::unique_ptr<DbEngine> &engine()
{
    static std::unique_ptr<DbEngine> e;
    return e;
}

QString (*&dataFolderSource())()
{
    static QString (*source)() = nullptr;
    return source;
}

QString dataFolder()
{
    if (!dataFolderSource())
        qFatal("The data folder reaches the database engine only once it is registered.");
    return dataFolderSource()();
}

QString setting(const char *key, const QString &defaultValue = QString())
{
    return platform::GetSetting(kSettingsApp, kDatabaseSection, key, defaultValue);
}

// Each line is opened, appended and closed, so a crash keeps what came before it.
void appendLine(const QString &path, const QString &line)
{
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Append))
        f.write(textfile::toCp1252(line) + "\r\n");
}

void log52(const QString &line)
{
    appendLine(gfsDBSM_LogFolder() + "/52.txt", line);
}

void showDmoError(const DbError &e)
{
    platform::MsgBox(e.text + QString::number(e.number), platform::vbCritical, "ZEL MSDE");
}

// The management connection: is the server up, and is this machine's clock its clock.
void mpServerStep()
{
    gsDBName = setting("DBName");
    gsServer = setting("Server");
    if (gsServer.trimmed().isEmpty())
        platform::ShellPort::get().exitProcess(0); // a workstation without a server can't run
    gsDBPassword = setting("Password").trimmed();
    gsDBUser = setting("UserName", "qx");
    log52(gsDBName);
    log52("Servername = " + gsServer);
    log52("set Server ");
    engine() = makeDbEngine(setting("Engine"), dataFolder());
    log52("Server set ");
    if (const QString note = engine()->serverNote(gsServer); !note.isEmpty())
        log52(note);
    log52("Connect now " + gsServer + ' ' + gsDBUser + ' ' + gsDBPassword);
    DbError error;
    const int status = engine()->connectServer(gsServer, gsDBUser, gsDBPassword, error);
    QCoreApplication::processEvents();
    log52("Server Status = " + QString::number(status));
    if (status != 1) {
        showDmoError(error);
        return;
    }
    const QString machine = engine()->machineOf(gsServer);
    if (machine.isEmpty()) { // the machine name cannot be cut from the server name
        showDmoError({5, "Invalid procedure call or argument", "ZEL MSDE"});
        return;
    }
    log52("Server Name = " + machine);
    // Setting the clock from the server is the platform's own business here.
    log52("Time verified");
}

bool hasDatabase(DbEngine &server, const QString &database)
{
    if (database.trimmed().isEmpty())
        return false;
    for (const QString &name : server.databaseNames()) {
        if (name.trimmed().toUpper() == database.trimmed().toUpper())
            return true;
    }
    return false;
}

bool mpDatabaseStep()
{
    return hasDatabase(*engine(), gsDBName);
}

} // namespace

void gpDBSM_RegisterDataFolder(QString (*dataFolder)())
{
    dataFolderSource() = dataFolder;
}

DBSM_Settings gfDBSM_Settings()
{
    return {setting("Engine"), setting("DBName"), setting("Server"), setting("UserName", "qx"),
            setting("Password")};
}

void gpDBSM_SaveSettings(const DBSM_Settings &settings)
{
    using platform::SaveSetting;
    if (settings.sEngine.isEmpty())
        platform::DeleteSetting(kSettingsApp, kDatabaseSection, "Engine");
    else
        SaveSetting(kSettingsApp, kDatabaseSection, "Engine", settings.sEngine);
    SaveSetting(kSettingsApp, kDatabaseSection, "DBName", settings.sDBName);
    SaveSetting(kSettingsApp, kDatabaseSection, "Server", settings.sServer);
    SaveSetting(kSettingsApp, kDatabaseSection, "UserName", settings.sUser);
    SaveSetting(kSettingsApp, kDatabaseSection, "Password", settings.sPassword);
}

bool gfbDBSM_Unconfigured()
{
    return setting("Engine").trimmed().isEmpty() && setting("Server").trimmed().isEmpty();
}

QString gfsDBSM_CheckServer(const DBSM_Settings &settings)
{
    const std::unique_ptr<DbEngine> server = makeDbEngine(settings.sEngine, dataFolder());
    DbError error;
    if (server->connectServer(settings.sServer, settings.sUser, settings.sPassword, error) != 1)
        return "The server " + settings.sServer + " could not be reached:\r" + error.text +
               "\r\rCheck the server's name, the user and the password, and that the server "
               "is running.";
    if (!hasDatabase(*server, settings.sDBName))
        return "The server " + settings.sServer + " has no database named " + settings.sDBName +
               ".\rCheck the database's name.";
    return QString();
}

QString gfsDBSM_LogFolder()
{
    const QString folder = platform::applicationFolder();
    if (QFileInfo(folder).isWritable())
        return folder;
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(own);
    return own;
}

DbEngine *gpDBSM_Engine()
{
    return engine().get();
}

void gpDBSM_Disconnect()
{
    gRecordsets.clear();
    gTables.clear();
    engine().reset();
    gbConnected = false;
}

bool gfbDBSM_Connect()
{
    gTables.assign(giFileCount + 2, TableDescriptor());
    gRecordsets.assign(giFileCount + 2, Recordset());
    mpServerStep();
    if (!engine()) {
        platform::MsgBox("Database Error\rNo database engine is available.");
        return false;
    }
    if (mpDatabaseStep())
        return true;
    log52("Database Create");
    platform::MsgBox("Database not found.\r\nIf you are trying to connect to an existing database "
                     "then run the Database Configuration.\r\nTo create a new database or convert "
                     "files from Pervasive run Orvantis",
                     platform::vbCritical, platform::appTitle());
    platform::ShellPort::get().exitProcess(0);
    return false;
}

void gpDBSM_OpenConnection(const QString &sDatabase)
{
    if (!engine())
        return;
    DbError error;
    engine()->open(sDatabase.isEmpty() ? gsDBName : sDatabase, error);
    gbConnected = engine()->isOpen();
}

bool gfbDBSM_TableExists(const QString &sTable)
{
    if (!engine())
        return false;
    if (!engine()->isOpen())
        gpDBSM_OpenConnection("");
    for (const QString &t : engine()->userTables()) {
        if (!t.compare(sTable, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

QString gfsDBSM_TableList(const QString &sPrefix)
{
    QString list;
    if (!engine())
        return list;
    if (!engine()->isOpen())
        gpDBSM_OpenConnection("");
    for (const QString &t : engine()->userTables()) {
        if (t.startsWith(sPrefix, Qt::CaseInsensitive))
            list += t + '|';
    }
    return list;
}

namespace {

bool connectionOpen()
{
    return engine() && engine()->isOpen();
}

struct ActionState {
    int depth = 0;
    bool failed = false; // the action under way met a fault
    DbError fault;
    quint64 serial = 1; // see mpDBSM_ReadSerial
};

ActionState &action()
{
    static ActionState a;
    return a;
}

void tellUser(const DbError &e)
{
    switch (e.fault) {
    case DbFault::Busy:
        platform::MsgBox("The database is busy at another station. Please try again in a moment.",
                         platform::vbExclamation);
        break;
    case DbFault::Damaged:
        platform::MsgBox("The database is damaged and cannot be read. Please call support; the "
                         "details are in PVSW.log in the data folder.",
                         platform::vbCritical);
        break;
    case DbFault::Offline:
        platform::MsgBox("The database server cannot be reached. Check that it is running and "
                         "that this station is on the network, then try again.",
                         platform::vbExclamation);
        break;
    case DbFault::None:
        platform::MsgBox(
            "An error occurred in executing SQL. View PVSW.log in datapath for details.");
        break;
    }
}

// Runs a statement on the data connection; false with `error` set when it fails.
bool execute(const QString &statement, DbError &error, qint32 *affected = nullptr)
{
    if (!connectionOpen()) {
        error = mpDBSM_NotOpen();
        return false;
    }
    static const QStringList changes{"INSERT", "UPDATE", "DELETE"};
    const QString verb = statement.trimmed().section(' ', 0, 0).toUpper();
    if (!changes.contains(verb))
        engine()->forgetPrepared(); // a table may change: reads are prepared anew
    const QString sql = engine()->translate(statement);
    if (sql.isEmpty())
        return true; // nothing to do on this engine
    QSqlQuery q(engine()->db());
    const bool schemaChange = !changes.contains(verb);
    if (schemaChange)
        engine()->schemaChange(true);
    bool done = true;
    for (const QString &part : sqlStatements(sql)) {
        if (!(done = mpDBSM_Run(q, &part, error)))
            break;
    }
    if (schemaChange)
        engine()->schemaChange(false);
    if (!done)
        return false;
    if (affected) {
        // As the suite's provider reports it: rows for a change of data, -1 for anything else.
        *affected = changes.contains(verb) ? q.numRowsAffected() : -1;
    }
    return true;
}

bool isStatementError(const DbError &e)
{
    return e.number == kErrNoValue || e.number == kErrCommand;
}

DbError &lastCreateError()
{
    static DbError e;
    return e;
}

} // namespace

DbAction::DbAction()
{
    if (action().depth++ > 0)
        return;
    ++action().serial;
    if (engine())
        engine()->resetLockWait();
}

DbAction::~DbAction()
{
    ActionState &a = action();
    if (--a.depth > 0)
        return;
    ++a.serial;
    if (!a.failed)
        return;
    a.failed = false;
    tellUser(a.fault);
}

bool gfbDBSM_ActionFailed()
{
    return action().failed;
}

quint64 mpDBSM_ReadSerial()
{
    return action().depth > 0 ? action().serial : 0;
}

bool mpDBSM_MayRun(DbError &error)
{
    const ActionState &a = action();
    if (a.failed) {
        error = a.fault;
        return false;
    }
    if (a.depth == 0)
        engine()->resetLockWait();
    return true;
}

bool mpDBSM_Run(QSqlQuery &query, const QString *sql, DbError &error)
{
    if (!mpDBSM_MayRun(error))
        return false;
    ++action().serial; // whatever was read ahead may be out of date now
    const DbStatement bound(*engine());
    if (sql ? query.exec(*sql) : query.exec())
        return true;
    error = engine()->errorOf(query.lastError());
    return false;
}

DbError mpDBSM_NotOpen()
{
    return engine() ? engine()->notOpenError() : SqliteEngine(QString()).notOpenError();
}

DbError mpDBSM_LastCreateError()
{
    return lastCreateError();
}

void mpDBSM_Fault(const QString &statement, const DbError &e)
{
    ActionState &a = action();
    if (a.failed)
        return; // told already; this statement never reached the database
    const QString exe = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    const QString path = dataFolder() + "/PVSW.log";
    appendLine(path, exe + " [EXE FAIL]" + QString::number(e.number) + " Description: " + e.text +
                         " Source: " + e.source);
    appendLine(path, statement);
    // Only a failure of the database itself ends the action: a refused statement is told on
    // its own and the statements after it still run.
    if (a.depth == 0 || e.number != kErrProvider) {
        tellUser(e);
        return;
    }
    a.failed = true;
    a.fault = e;
}

qint32 glDBSM_Execute(const QString &sSQL)
{
    DbError e;
    qint32 affected = 0;
    if (execute(sSQL, e, &affected))
        return affected;
    if (!isStatementError(e))
        mpDBSM_Fault(sSQL, e);
    return 0;
}

bool gfbDBSM_CreateTable(qint16 iFile)
{
    if (!connectionOpen())
        gpDBSM_OpenConnection("");
    DbError &e = lastCreateError();
    e = DbError();
    const TableDescriptor &t = gTables[iFile];
    if (!execute(t.sCreateSQL, e))
        return false;
    for (const QString &piece : t.sIndexSQL.split(';')) {
        if (!piece.trimmed().isEmpty() && !execute(piece.trimmed(), e))
            return false;
    }
    return true;
}

bool gfbDBSM_AddColumn(qint16 iFile, const QString &sName, const QString &sType)
{
    return glDBSM_Execute("ALTER TABLE " + gTables[iFile].sTableName + " ADD " + sName + ' ' +
                          sType) != 0;
}

// Traps its errors: a rename whose old column is gone is the ordinary case of
// every start after the first, and only the answer matters.
bool gfbDBSM_RenameColumn(const QString &sTable, const QString &sOld, const QString &sNew)
{
    const QString statement = "sp_RENAME '" + sTable + '.' + sOld + "', '" + sNew + " ', 'COLUMN'";
    DbError e;
    if (execute(statement, e))
        return true;
    if (e.fault != DbFault::None)
        mpDBSM_Fault(statement, e); // the database itself failed, not the rename
    return false;
}

SqlRead gfsDBSM_LikeContains(const QString &sColumn, const QString &sValue)
{
    // No stored text holds a NUL: such a value finds nothing, and says so in
    // the statement's text, where it would show as blanks.
    if (sqlBindsAsNull(sValue))
        return sColumn + " IS NULL AND " + sColumn + " IS NOT NULL";
    if (engine())
        return sColumn + ' ' + engine()->likeContains(sValue);
    return sColumn + ' ' + SqlServerEngine().likeContains(sValue);
}
