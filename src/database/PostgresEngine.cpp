#include "database/DbEngine.h"
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <chrono>
#include <condition_variable>
#include <libpq-fe.h>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <thread>

const char *const PostgresEngine::kDatabasesQuery =
    "SELECT datname FROM pg_database WHERE NOT datistemplate AND datname <> 'postgres' "
    "ORDER BY datname";
const char *const PostgresEngine::kTablesQuery =
    "SELECT tablename FROM pg_tables WHERE schemaname = current_schema() ORDER BY tablename";
// Case ignored, and with CHAR trailing blanks too; LIKE cannot use it (see translate).
const char *const PostgresEngine::kCollation =
    "CREATE COLLATION IF NOT EXISTS ZELCI (provider = icu, locale = 'und-u-ks-level2', "
    "deterministic = false)";

namespace {

// The database the management step and the catalog queries use, as SQL Server's master.
const char *const kServerDatabase = "postgres";
// A server that does not answer is given up after this many seconds.
const int kConnectTimeoutSeconds = 5;

// What the server may take past kStatementLimitMs to say that it gave the statement up.
const int kAnswerGraceMs = 1500;

// SQLSTATE classes and codes that are no refused statement.
bool isConnectionState(const QString &state)
{
    return state.isEmpty() || state.startsWith("08") || state.startsWith("57P") ||
           state.startsWith("53") || state.startsWith("28") || state == "3D000";
}

// libpq's text: "ERROR:  " before it, the statement's position after it, and
// lines a log of one line per failure cannot hold.
QString serverText(const QString &text)
{
    static const QRegularExpression severity("^(?:ERROR|FATAL|PANIC):\\s+");
    QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    if (lines.size() > 1 && text.contains("\nLINE "))
        lines = lines.mid(0, 1);
    for (QString &line : lines) line = line.trimmed().remove(severity);
    static const QRegularExpression state("\\s*\\([0-9A-Z]{5}\\)$"); // the driver's SQLSTATE
    return lines.join(' ').remove(state).trimmed();
}

QString quotedName(const QString &name)
{
    return '"' + QString(name).replace('"', "\"\"") + '"';
}

} // namespace

// A frozen server's machine still acknowledges what is sent to it, so neither
// the server's own limit nor the connection's keepalives end the wait for its
// answer. The watch shuts the connection's socket when a statement runs past
// its time: the driver then reports a connection the server dropped.
class SocketWatch {
public:
    SocketWatch() : m_thread([this] { run(); }) {}
    ~SocketWatch()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_quit = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }
    void arm(int socket, std::chrono::milliseconds limit)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_socket = socket;
            m_deadline = std::chrono::steady_clock::now() + limit;
        }
        m_changed.notify_all();
    }
    void disarm()
    {
        const std::lock_guard lock(m_mutex);
        m_socket = -1;
    }

private:
    void run()
    {
        std::unique_lock lock(m_mutex);
        while (!m_quit) {
            if (m_socket < 0) {
                m_changed.wait(lock);
            } else if (std::chrono::steady_clock::now() >= m_deadline) {
                ::shutdown(m_socket, SHUT_RDWR);
                m_socket = -1;
            } else {
                m_changed.wait_until(lock, m_deadline);
            }
        }
    }
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_socket = -1;
    std::chrono::steady_clock::time_point m_deadline;
    bool m_quit = false;
    std::thread m_thread;
};

namespace {

PGconn *connectionOf(const QSqlDatabase &db)
{
    const QVariant handle = db.isOpen() ? db.driver()->handle() : QVariant();
    // The driver names the type by its tag (pg_conn*) or by libpq's typedef.
    if (!handle.isValid() ||
        (qstrcmp(handle.typeName(), "pg_conn*") != 0 && qstrcmp(handle.typeName(), "PGconn*") != 0))
        return nullptr;
    return *static_cast<PGconn *const *>(handle.data());
}

} // namespace

PostgresEngine::PostgresEngine() = default;

PostgresEngine::~PostgresEngine()
{
    forgetPrepared();
    m_db = QSqlDatabase();
    m_admin = QSqlDatabase();
    for (const QString &name : {m_connection, m_adminConnection}) {
        if (!name.isEmpty())
            QSqlDatabase::removeDatabase(name);
    }
}

std::pair<QString, int> PostgresEngine::hostAndPort(const QString &server)
{
    const QString name = server.section('\\', 0, 0).trimmed();
    const qsizetype colon = name.lastIndexOf(':');
    bool ok = false;
    const int port = colon < 0 ? 0 : name.mid(colon + 1).toInt(&ok);
    if (!ok || port <= 0)
        return {name.isEmpty() ? QString("localhost") : name, 5432};
    return {name.left(colon), port};
}

QString PostgresEngine::machineOf(const QString &server) const
{
    return hostAndPort(server).first;
}

QString PostgresEngine::serverNote(const QString &server) const
{
    if (!server.contains('\\'))
        return QString();
    const auto [host, port] = hostAndPort(server);
    return "Instance " + server.section('\\', 1) + " ignored: PostgreSQL at " + host + ':' +
           QString::number(port);
}

int PostgresEngine::connectServer(const QString &server, const QString &user,
                                  const QString &password, DbError &error)
{
    m_server = server, m_user = user, m_password = password;
    // The management connection stays apart: the data connection opens the database itself.
    m_admin = QSqlDatabase();
    if (!m_adminConnection.isEmpty())
        QSqlDatabase::removeDatabase(m_adminConnection);
    m_adminConnection = "pgsql-" + QUuid::createUuid().toString(QUuid::Id128);
    m_admin = connection(m_adminConnection, kServerDatabase);
    if (m_admin.open())
        return 1;
    error = errorOf(m_admin.lastError());
    error.number = kErrProvider;
    return 0;
}

QSqlDatabase PostgresEngine::connection(const QString &name, const QString &database) const
{
    QSqlDatabase db = QSqlDatabase::addDatabase("QPSQL", name);
    const auto [host, port] = hostAndPort(m_server);
    db.setHostName(host);
    db.setPort(port);
    db.setUserName(m_user);
    db.setPassword(m_password);
    db.setDatabaseName(database.trimmed());
    // A statement waits kLockWaitMs at most for another station's lock and runs
    // kStatementLimitMs at most; a link that drops is found by the keepalives
    // within seconds. The server's notices (an object that exists already) are
    // nobody's business.
    db.setConnectOptions(
        QString("connect_timeout=%1;keepalives=1;keepalives_idle=2;keepalives_interval=1;"
                "keepalives_count=2;tcp_user_timeout=%2;options='-c lock_timeout=%3 -c "
                "statement_timeout=%4 -c client_min_messages=warning'")
            .arg(kConnectTimeoutSeconds)
            .arg(kStatementLimitMs)
            .arg(kLockWaitMs)
            .arg(kStatementLimitMs));
    return db;
}

bool PostgresEngine::openConnection(const QString &database, DbError &error)
{
    forgetPrepared();
    m_db = QSqlDatabase();
    if (!m_connection.isEmpty())
        QSqlDatabase::removeDatabase(m_connection);
    m_connection = "pgsql-" + QUuid::createUuid().toString(QUuid::Id128);
    m_db = connection(m_connection, database);
    if (!m_db.open()) {
        error = errorOf(m_db.lastError());
        error.number = kErrProvider;
        return false;
    }
    m_database = database.trimmed();
    QSqlQuery setup(m_db);
    // Only the database's owner may make the collation: the demo seeder does it
    // once, and a station without the right finds it there.
    setup.exec(kCollation);
    m_columnNames.clear();
    loadColumnNames();
    m_lost = false;
    return true;
}

bool PostgresEngine::open(const QString &database, DbError &error)
{
    // The settings name a database as SQL Server does, without case; the server's names have one.
    QString name = database.trimmed();
    for (const QString &known : m_admin.isOpen() ? databaseNames() : QStringList()) {
        if (!known.compare(name, Qt::CaseInsensitive))
            name = known;
    }
    return openConnection(name, error);
}

bool PostgresEngine::connectionEnded()
{
    PGconn *connection = connectionOf(m_db);
    if (!connection)
        return false;
    // Between two statements the server says nothing unless it ends the
    // connection (a restart, an administrator): anything waiting means that.
    pollfd socket{PQsocket(connection), POLLIN, 0};
    return socket.fd < 0 || ::poll(&socket, 1, 0) != 0;
}

void PostgresEngine::statementStarts()
{
    PGconn *connection = connectionOf(m_db);
    if (m_schemaChange || !connection)
        return;
    if (!m_watch)
        m_watch = std::make_unique<SocketWatch>();
    m_watch->arm(PQsocket(connection),
                 std::chrono::milliseconds(kStatementLimitMs + kAnswerGraceMs));
}

void PostgresEngine::statementEnds()
{
    if (m_watch)
        m_watch->disarm();
}

void PostgresEngine::schemaChange(bool starts)
{
    m_schemaChange = false;
    {
        const DbStatement bound(*this);
        QSqlQuery(m_db).exec(
            QString("SET statement_timeout = %1").arg(starts ? 0 : kStatementLimitMs));
    }
    m_schemaChange = starts;
}

void PostgresEngine::resetLockWait()
{
    DbEngine::resetLockWait();
    if (!m_lost && !m_database.isEmpty() && connectionEnded())
        m_lost = true; // opened again before the action reads, so it says nothing
    if (!m_lost || m_database.isEmpty())
        return;
    // The server went away in an earlier action: this one starts on a new
    // connection, or fails at once while the server is still away.
    m_reopenError = DbError();
    if (!openConnection(m_database, m_reopenError)) {
        m_reopenError.fault = DbFault::Offline;
        m_lost = true;
    }
}

DbError PostgresEngine::notOpenError() const
{
    return m_lost && m_reopenError.isError() ? m_reopenError : DbEngine::notOpenError();
}

QStringList PostgresEngine::databaseNames()
{
    QStringList names;
    QSqlQuery q(m_admin);
    if (q.exec(kDatabasesQuery))
        while (q.next()) names << q.value(0).toString();
    return names;
}

QStringList PostgresEngine::userTables()
{
    QStringList tables;
    QSqlQuery q(m_db);
    if (q.exec(kTablesQuery))
        while (q.next()) tables << q.value(0).toString();
    return tables;
}

bool PostgresEngine::isStalePlan(const QSqlError &error) const
{
    return error.nativeErrorCode() == "0A000" &&
           error.databaseText().contains("cached plan must not change result type");
}

QString PostgresEngine::caseBlind(const QString &expression) const
{
    return '(' + expression + "::bpchar COLLATE ZELCI)";
}

QString PostgresEngine::alterColumn(const QString &table, const QString &column,
                                    const QString &type) const
{
    QString s = "ALTER TABLE " + table + " ALTER COLUMN " + column + " TYPE " + type;
    if (type.startsWith("CHAR", Qt::CaseInsensitive) ||
        type.startsWith("VARCHAR", Qt::CaseInsensitive))
        s += " COLLATE ZELCI";
    return s;
}

QString PostgresEngine::columnName(const QString &fieldName) const
{
    return m_columnNames.value(fieldName, fieldName);
}

void PostgresEngine::loadColumnNames()
{
    QSqlQuery q(m_db);
    q.setForwardOnly(true);
    if (!q.exec("SELECT a.attname, d.description FROM pg_description d JOIN pg_attribute a ON "
                "a.attrelid = d.objoid AND a.attnum = d.objsubid WHERE d.classoid = "
                "'pg_class'::regclass AND d.objsubid > 0"))
        return;
    while (q.next()) {
        const QString declared = q.value(1).toString();
        if (!declared.compare(q.value(0).toString(), Qt::CaseInsensitive))
            m_columnNames.insert(q.value(0).toString(), declared);
    }
}

QString PostgresEngine::keepColumnNames(const QString &statement) const
{
    static const QRegularExpression create("^CREATE TABLE\\s+(\\w+)\\s*\\((.*)\\)\\s*;?\\s*$",
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression add("^ALTER TABLE\\s+(\\w+)\\s+ADD\\s+(\\w+)",
                                        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression rename("^sp_RENAME\\s+'(\\w+)\\.\\w+',\\s*'\\s*(\\w+)",
                                           QRegularExpression::CaseInsensitiveOption);
    QString table;
    QStringList columns;
    if (const QRegularExpressionMatch m = create.match(statement); m.hasMatch()) {
        table = m.captured(1);
        int depth = 0;
        QString piece;
        for (const QChar c : m.captured(2) + ',') {
            depth += c == '(' ? 1 : (c == ')' ? -1 : 0);
            if (c != ',' || depth > 0) {
                piece += c;
                continue;
            }
            columns << piece.trimmed().section(' ', 0, 0);
            piece.clear();
        }
    } else if (const QRegularExpressionMatch m = add.match(statement); m.hasMatch()) {
        table = m.captured(1), columns << m.captured(2);
    } else if (const QRegularExpressionMatch m = rename.match(statement); m.hasMatch()) {
        table = m.captured(1), columns << m.captured(2);
    }
    QString comments;
    for (const QString &c : columns) {
        if (c.isEmpty() || c == c.toLower())
            continue;
        m_columnNames.insert(c.toLower(), c);
        comments += QString("\nCOMMENT ON COLUMN %1.%2 IS '%2'").arg(table, c);
    }
    return comments;
}

QString PostgresEngine::translate(const QString &statement) const
{
    QString s = translateTransactSql(statement);
    if (!s.startsWith("SELECT", Qt::CaseInsensitive) && !s.isEmpty())
        s += keepColumnNames(statement);
    if (!s.contains("like", Qt::CaseInsensitive))
        return s;
    // The collation that ignores case cannot match patterns: the column is
    // compared byte by byte, and ILIKE ignores the case.
    return sqlOutsideLiterals(s, [](const QString &sql) {
        static const QRegularExpression like("\\b(NOT\\s+)?LIKE\\b",
                                             QRegularExpression::CaseInsensitiveOption);
        return QString(sql).replace(like, "COLLATE \"C\" \\1ILIKE");
    });
}

DbError PostgresEngine::errorOf(const QSqlError &error) const
{
    const QString state = error.nativeErrorCode().trimmed();
    DbError e{kErrCommand,
              serverText(error.databaseText().isEmpty() ? error.text() : error.databaseText()),
              name()};
    static const QRegularExpression noTable("relation \"(?:\\w+\\.)?(\\w+)\" does not exist");
    const QRegularExpressionMatch m = noTable.match(e.text);
    if (state == "57014" && e.text.contains("statement timeout")) {
        e = {kErrProvider, e.text, name(), DbFault::Offline}; // the server did not answer in time
    } else if (state == "55P03" || state == "40P01") {
        e = {kErrProvider, "The database is locked by another program: " + e.text, name(),
             DbFault::Busy};
    } else if (state == "XX001" || state == "XX002") {
        e.number = kErrProvider;
        e.fault = DbFault::Damaged;
    } else if (state == "42P01" && m.hasMatch()) {
        e.text = "Invalid object name '" + m.captured(1) + "'.";
    } else if (state == "23505") {
        e.text = "Cannot insert duplicate key row. " + e.text;
    } else if (state == "42501" || error.type() == QSqlError::ConnectionError ||
               isConnectionState(state)) {
        e.number = kErrProvider;
        if (state.isEmpty() || state.startsWith("08") || state.startsWith("57P")) {
            e.fault = DbFault::Offline;
            m_lost = true;
        }
    }
    return e;
}

DbEngine::RowLocator PostgresEngine::rowLocator() const
{
    return {"ctid", "%1=?"};
}

bool PostgresEngine::create(const QString &server, const QString &user, const QString &password,
                            const QString &database, QString *error)
{
    PostgresEngine engine;
    DbError e;
    if (engine.connectServer(server, user, password, e) == 1) {
        QSqlQuery q(engine.admin());
        if (q.exec("CREATE DATABASE " + quotedName(database.trimmed())) && engine.open(database, e))
            return true;
        if (!e.isError())
            e = engine.errorOf(q.lastError());
    }
    if (error)
        *error = e.text;
    return false;
}
