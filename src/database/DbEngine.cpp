#include "database/DbEngine.h"
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <cctype>
#include <set>
#include <sqlite3.h>

QString sqlOutsideLiterals(const QString &statement,
                           const std::function<QString(const QString &)> &change)
{
    QString out;
    qsizetype from = 0;
    bool inValue = false;
    for (qsizetype i = 0; i <= statement.size(); ++i) {
        if (i < statement.size() && statement[i] != '\'')
            continue;
        const QString part = statement.mid(from, i - from);
        out += inValue ? part : change(part);
        if (i < statement.size())
            out += '\'';
        inValue = !inValue;
        from = i + 1;
    }
    return out;
}

QStringList sqlStatements(const QString &text)
{
    QStringList statements(QString{});
    bool inValue = false;
    for (const QChar c : text) {
        if (c == '\'')
            inValue = !inValue;
        if (c == '\n' && !inValue)
            statements << QString();
        else
            statements.last() += c;
    }
    return statements;
}

DbEngine::~DbEngine() = default;

DbStatement::DbStatement(DbEngine &engine) : m_engine(engine)
{
    m_engine.statementStarts();
}

DbStatement::~DbStatement()
{
    m_engine.statementEnds();
}

bool DbEngine::read(const SqlRead &statement, QStringList &names, QVector<QVector<QVariant>> &rows,
                    int maxRows, QSqlError &error)
{
    QSqlQuery *q = nullptr;
    for (int attempt = 0; attempt < 2 && !q; ++attempt) {
        q = preparedRead(statement, error);
        if (!q)
            return false;
        const DbStatement bound(*this);
        if (!q->exec()) {
            error = q->lastError();
            q = nullptr;
            if (!isStalePlan(error))
                return false;
            forgetPrepared(); // another program changed the table: prepare it again
        }
    }
    if (!q)
        return false;
    m_hasRead = true;
    const QSqlRecord record = q->record();
    for (int i = 0; i < record.count(); ++i) names << record.fieldName(i);
    while (q->next() && (maxRows <= 0 || rows.size() <= maxRows)) {
        QVector<QVariant> row(record.count());
        for (int i = 0; i < record.count(); ++i) row[i] = q->value(i);
        rows << row;
    }
    q->finish(); // a read left open would hold the other stations' writes
    return true;
}

DbEngine::ReadShape DbEngine::readShape(const SqlRead &read) const
{
    // A planner that sees no values walks a whole index for the OR of a
    // two-segment Get Next near the end of a table. The translation makes it a
    // comparison of the pair, which takes the first segment's value once.
    static const QRegularExpression either("\\bOR\\b", QRegularExpression::CaseInsensitiveOption);
    const QStringList &v = read.values;
    if (v.size() == 4 && v[0] == v[1] && v[0] == v[3] && read.shape.contains(either)) {
        const QString text = translate(read.shape);
        if (!text.contains(either))
            return {'\n' + read.shape, {v[0], v[2]}, text}; // no statement of the suite starts so
    }
    return {read.shape, v, QString()}; // translated when it is prepared
}

QString DbEngine::dialectOf(const ReadShape &shape) const
{
    return shape.text.isEmpty() ? translate(shape.key) : shape.text;
}

QSqlQuery *DbEngine::preparedRead(const SqlRead &statement, QSqlError &error)
{
    const ReadShape read = readShape(statement);
    std::shared_ptr<QSqlQuery> &q = m_prepared[read.key];
    if (!q) {
        if (m_prepared.size() > kMaxPrepared) {
            m_prepared.clear();
            return preparedRead(statement, error);
        }
        q = std::make_shared<QSqlQuery>(m_db);
        q->setForwardOnly(true);
        if (!q->prepare(dialectOf(read))) {
            error = q->lastError();
            m_prepared.remove(read.key);
            return nullptr;
        }
    }
    for (int i = 0; i < read.values.size(); ++i) {
        const QString &v = read.values[i];
        q->bindValue(i, sqlBindsAsNull(v) ? QVariant(QMetaType::fromType<QString>()) : v);
    }
    return q.get();
}

bool DbEngine::isOpen() const
{
    return m_db.isValid() && m_db.isOpen();
}

QString DbEngine::translate(const QString &statement) const
{
    return statement;
}

DbError DbEngine::notOpenError() const
{
    return {kErrProvider, "The connection to the database is not open.", "ZEL"};
}

SqlRead DbEngine::likeContains(const QString &value) const
{
    const QString specials = likeSpecials() + '\\';
    QString pattern = "%";
    for (const QChar c : value) {
        if (specials.contains(c))
            pattern += '\\';
        pattern += c;
    }
    return {"like ? ESCAPE '\\'", {pattern + '%'}};
}

QString DbEngine::machineOf(const QString &server) const
{
    const qsizetype slash = server.indexOf('\\');
    return slash < 0 ? QString() : server.left(slash);
}

QString DbEngine::caseBlind(const QString &expression) const
{
    return '(' + expression + " COLLATE ZELCI)";
}

QString DbEngine::translateTransactSql(const QString &statement) const
{
    QString s = statement;
    // Reads come by the thousand: they take the cheap path.
    if (s.startsWith("SELECT", Qt::CaseInsensitive)) {
        // Get Next on a two-segment key says "the rest of this value, or the next
        // value" as an OR that no index serves in order; as a comparison of the
        // pair it is one index seek, and means the same.
        static const QRegularExpression nextOfTwo(
            "^SELECT\\s+TOP (\\d+) \\* FROM (\\w+) WHERE \\(SELECT COUNT\\(\\*\\) FROM \\2 WHERE "
            "(\\w+)=\\?\\) > 1 AND \\3=\\? AND (\\w+)([<>])\\? OR \\3\\5\\? ORDER BY "
            "\\3((?: DESC)?),\\4\\6$");
        if (s.contains("(SELECT COUNT(*)"))
            s.replace(nextOfTwo,
                      "SELECT TOP \\1 * FROM \\2 WHERE (\\3,\\4)\\5(?,?) ORDER BY \\3\\6,\\4\\6");
        static const QRegularExpression top("^(SELECT\\s+)TOP (\\d+) ",
                                            QRegularExpression::CaseInsensitiveOption);
        if (s.contains("TOP ", Qt::CaseInsensitive)) {
            if (const QRegularExpressionMatch m = top.match(s); m.hasMatch()) {
                const QString rows = m.captured(2);
                s.replace(top, "\\1");
                s += " LIMIT " + rows;
            }
        }
        if (!s.contains("ltrim(ItemID)") && !s.contains("LEFT(", Qt::CaseInsensitive))
            return s;
        return sqlOutsideLiterals(s, [this](const QString &sql) {
            static const QRegularExpression left("\\bLEFT\\(([^,()]+),\\s*([^()]+)\\)",
                                                 QRegularExpression::CaseInsensitiveOption);
            return QString(sql)
                .replace("ltrim(ItemID)", caseBlind("ltrim(ItemID)"))
                .replace(left, leftOf());
        });
    }
    // Text columns compare as SQL Server's: case and trailing blanks ignored.
    static const QRegularExpression text("\\b((?:VAR)?CHAR\\s*\\(\\s*\\d+\\s*\\))",
                                         QRegularExpression::CaseInsensitiveOption);
    if (s.startsWith("CREATE TABLE", Qt::CaseInsensitive))
        s.replace(text, "\\1 COLLATE ZELCI");
    static const QRegularExpression alterColumnForm(
        "^ALTER TABLE (\\S+) ALTER COLUMN (\\w+)\\s+(.*\\S)\\s*$",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch alter = alterColumnForm.match(s);
    if (alter.hasMatch())
        return alterColumn(alter.captured(1), alter.captured(2), alter.captured(3));
    if (s.startsWith("ALTER TABLE", Qt::CaseInsensitive))
        s.replace(text, "\\1 COLLATE ZELCI");
    static const QRegularExpression dropIndex("^Drop index (\\w+)\\.(\\w+)\\s*$",
                                              QRegularExpression::CaseInsensitiveOption);
    s.replace(dropIndex, "DROP INDEX IF EXISTS \\1_\\2");
    static const QRegularExpression index(
        "^CREATE\\s+(UNIQUE\\s+)?(?:NON)?(?:CLUSTERED\\s+)?INDEX\\s+(\\w+)\\s+ON\\s+(\\w+)",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch indexMatch = index.match(s);
    s.replace(index, "CREATE \\1INDEX \\3_\\2 ON \\3"); // index names are per database here
    // Searches by Item ID compare ltrim(ItemID); a second index on that
    // expression keeps them from reading the whole table.
    static const QRegularExpression itemIdFirst("\\(\\s*ItemID\\s*[,)]",
                                                QRegularExpression::CaseInsensitiveOption);
    if (indexMatch.hasMatch() && itemIdFirst.match(s).hasMatch()) {
        const QString table = indexMatch.captured(3), name = indexMatch.captured(2);
        s = s.trimmed();
        if (s.endsWith(';'))
            s.chop(1);
        s += QString("\nCREATE INDEX IF NOT EXISTS %1_%2_ltrim ON %1 (%3)")
                 .arg(table, name, caseBlind("ltrim(ItemID)"));
    }
    static const QRegularExpression rename(
        "^sp_RENAME\\s+'(\\w+)\\.(\\w+)',\\s*'\\s*(\\w+)\\s*',\\s*'COLUMN'",
        QRegularExpression::CaseInsensitiveOption);
    s.replace(rename, "ALTER TABLE \\1 RENAME COLUMN \\2 TO \\3");
    return s;
}

QString DbEngine::assignments(const QStringList &columns)
{
    QStringList parts;
    for (const QString &c : columns) parts << c + "=?";
    return parts.join(',');
}

QString DbEngine::rowCondition(const QStringList &columns, const QVector<QVariant> &original,
                               const QString &equalForm)
{
    QStringList parts;
    for (int i = 0; i < columns.size(); ++i)
        parts << (original.value(i).isNull() ? columns[i] + " IS NULL" : equalForm.arg(columns[i]));
    return parts.join(" AND ");
}

QString DbEngine::updateOneRow(const QString &table, const QStringList &setColumns,
                               const QStringList &allColumns,
                               const QVector<QVariant> &original) const
{
    const RowLocator at = rowLocator();
    const QString condition = rowCondition(allColumns, original, at.equalForm);
    const QString set = " SET " + assignments(setColumns) + " WHERE ";
    if (at.column.isEmpty())
        return "UPDATE TOP (1) " + table + set + condition;
    return "UPDATE " + table + set + at.column + "=(SELECT " + at.column + " FROM " + table +
           " WHERE " + condition + " LIMIT 1)";
}

QString DbEngine::deleteOneRow(const QString &table, const QStringList &allColumns,
                               const QVector<QVariant> &original) const
{
    const RowLocator at = rowLocator();
    const QString condition = rowCondition(allColumns, original, at.equalForm);
    if (at.column.isEmpty())
        return "DELETE TOP (1) FROM " + table + " WHERE " + condition;
    return "DELETE FROM " + table + " WHERE " + at.column + "=(SELECT " + at.column + " FROM " +
           table + " WHERE " + condition + " LIMIT 1)";
}

DbError DbEngine::errorOf(const QSqlError &error) const
{
    DbError e;
    e.text = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    e.source = name();
    bool ok = false;
    e.number = error.nativeErrorCode().toLongLong(&ok);
    if (!ok || e.number == 0)
        e.number = error.type() == QSqlError::ConnectionError ? kErrProvider : kErrCommand;
    return e;
}

namespace {

QString uniqueConnection(const char *kind)
{
    return QString("%1-%2").arg(kind, QUuid::createUuid().toString(QUuid::Id128));
}

// Text as SQL Server's default collation weighs it: first the letters, with
// case and accents set aside ("\u00c9clair" among the E's), then the accents.
std::pair<QString, QString> collationWeights(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_D).toCaseFolded();
    QString letters;
    letters.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            letters += c;
    }
    return {letters, decomposed};
}

// Compares as SQL Server's default collation does: case ignored, trailing blanks
// ignored, accents second to the letters. The database text is UTF-8; ASCII,
// nearly all of it, is compared in place.
int zelCompare(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    auto *x = static_cast<const unsigned char *>(a);
    auto *y = static_cast<const unsigned char *>(b);
    int n = lengthA, m = lengthB;
    while (n > 0 && x[n - 1] == ' ') --n;
    while (m > 0 && y[m - 1] == ' ') --m;
    const int common = std::min(n, m);
    for (int i = 0; i < common; ++i) {
        if (x[i] >= 0x80 || y[i] >= 0x80) {
            const auto p =
                collationWeights(QString::fromUtf8(reinterpret_cast<const char *>(x + i), n - i));
            const auto q =
                collationWeights(QString::fromUtf8(reinterpret_cast<const char *>(y + i), m - i));
            int c = p.first.compare(q.first);
            if (c == 0)
                c = p.second.compare(q.second);
            return c < 0 ? -1 : (c > 0 ? 1 : 0);
        }
        // Plain letters fold in place: the library's tolower asks the locale each time.
        const auto fold = [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
        const int p = fold(x[i]), q = fold(y[i]);
        if (p != q)
            return p < q ? -1 : 1;
    }
    return n == m ? 0 : (n < m ? -1 : 1);
}

} // namespace

SqliteEngine::SqliteEngine(QString folder) : m_folder(std::move(folder)) {}

SqliteEngine::~SqliteEngine()
{
    forgetPrepared();
    m_db = QSqlDatabase();
    if (!m_connection.isEmpty())
        QSqlDatabase::removeDatabase(m_connection);
}

QString SqliteEngine::fileOf(const QString &database) const
{
    return QDir(m_folder).filePath(database.trimmed() + ".db");
}

int SqliteEngine::connectServer(const QString &, const QString &, const QString &, DbError &error)
{
    if (QFileInfo(m_folder).isDir())
        return 1;
    error = {kErrProvider,
             "The data folder " + QDir::toNativeSeparators(m_folder) +
                 " holding the embedded database cannot be reached.",
             name()};
    return 0;
}

QStringList SqliteEngine::databaseNames()
{
    QStringList names;
    for (const QFileInfo &f : QDir(m_folder).entryInfoList({"*.db"}, QDir::Files))
        names << f.completeBaseName();
    return names;
}

bool SqliteEngine::create(const QString &file, QString *error)
{
    sqlite3 *handle = nullptr;
    const int rc = sqlite3_open_v2(file.toUtf8().constData(), &handle,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK && error)
        *error = QString::fromUtf8(sqlite3_errstr(rc));
    sqlite3_close(handle);
    return rc == SQLITE_OK;
}

bool SqliteEngine::open(const QString &database, DbError &error)
{
    // Never make a database by opening it: the application does not create databases.
    QString file;
    for (const QFileInfo &f : QDir(m_folder).entryInfoList({"*.db"}, QDir::Files)) {
        if (!f.completeBaseName().trimmed().compare(database.trimmed(), Qt::CaseInsensitive))
            file = f.absoluteFilePath();
    }
    if (file.isEmpty()) {
        error = {kErrProvider, "Cannot open database \"" + database + "\" requested by the login.",
                 name()};
        return false;
    }
    forgetPrepared();
    m_hasRead = false;
    m_handle = nullptr;
    m_db = QSqlDatabase();
    if (!m_connection.isEmpty())
        QSqlDatabase::removeDatabase(m_connection);
    m_connection = uniqueConnection("sqlite");
    m_db = QSqlDatabase::addDatabase("QSQLITE", m_connection);
    m_db.setDatabaseName(file);
    if (!m_db.open()) {
        error = errorOf(m_db.lastError());
        return false;
    }
    const QVariant handle = m_db.driver()->handle();
    m_handle = nullptr;
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0) {
        sqlite3 *h = m_handle = *static_cast<sqlite3 *const *>(handle.data());
        sqlite3_create_collation_v2(h, "ZELCI", SQLITE_UTF8, nullptr, zelCompare, nullptr);
        // A lock of another station is waited for in short steps, out of what is
        // left of the action's allowance, so no action waits longer than that.
        sqlite3_busy_handler(
            h,
            [](void *self, int) -> int {
                auto *engine = static_cast<SqliteEngine *>(self);
                const int step = std::min(engine->m_lockWaitLeftMs, 25);
                if (step <= 0)
                    return 0;
                sqlite3_sleep(step);
                engine->m_lockWaitLeftMs -= step;
                return 1;
            },
            this);
    }
    return true;
}

void SqliteEngine::forgetPrepared()
{
    m_statements.clear();
    DbEngine::forgetPrepared();
}

bool SqliteEngine::read(const SqlRead &statement, QStringList &names,
                        QVector<QVector<QVariant>> &rows, int maxRows, QSqlError &error)
{
    auto failure = [this, &error](int code) {
        error =
            QSqlError("Unable to execute statement", QString::fromUtf8(sqlite3_errmsg(m_handle)),
                      QSqlError::StatementError, QString::number(code));
        return false;
    };
    if (!m_handle)
        return DbEngine::read(statement, names, rows, maxRows, error);
    const ReadShape shape = readShape(statement);
    std::shared_ptr<sqlite3_stmt> &prepared = m_statements[shape.key];
    if (!prepared) {
        if (m_statements.size() > kMaxPrepared) {
            m_statements.clear();
            return read(statement, names, rows, maxRows, error);
        }
        sqlite3_stmt *made = nullptr;
        const QByteArray text = dialectOf(shape).toUtf8();
        const int rc = sqlite3_prepare_v3(m_handle, text.constData(), int(text.size()),
                                          SQLITE_PREPARE_PERSISTENT, &made, nullptr);
        if (rc != SQLITE_OK) {
            m_statements.remove(shape.key);
            return failure(rc);
        }
        prepared.reset(made, sqlite3_finalize);
    }
    sqlite3_stmt *q = prepared.get();
    for (int i = 0; i < shape.values.size(); ++i) {
        const QString &v = shape.values[i];
        if (sqlBindsAsNull(v))
            sqlite3_bind_null(q, i + 1);
        else
            sqlite3_bind_text16(q, i + 1, v.utf16(), int(v.size() * sizeof(char16_t)),
                                SQLITE_TRANSIENT);
    }
    int rc = SQLITE_ROW;
    while ((maxRows <= 0 || rows.size() <= maxRows) && (rc = sqlite3_step(q)) == SQLITE_ROW) {
        // The columns are counted at each step: another station's change of
        // the table prepares the statement again, with the table's new columns.
        const int columns = sqlite3_column_count(q);
        QVector<QVariant> row(columns);
        for (int i = 0; i < columns; ++i) {
            switch (sqlite3_column_type(q, i)) {
            case SQLITE_INTEGER:
                row[i] = qint64(sqlite3_column_int64(q, i));
                break;
            case SQLITE_FLOAT:
                row[i] = sqlite3_column_double(q, i);
                break;
            case SQLITE_NULL:
                row[i] = QVariant(QMetaType::fromType<QString>());
                break;
            case SQLITE_BLOB:
                row[i] = QByteArray(static_cast<const char *>(sqlite3_column_blob(q, i)),
                                    sqlite3_column_bytes(q, i));
                break;
            default:
                row[i] = QString(static_cast<const QChar *>(sqlite3_column_text16(q, i)),
                                 sqlite3_column_bytes16(q, i) / int(sizeof(QChar)));
            }
        }
        rows << row;
    }
    const bool done = rc == SQLITE_ROW || rc == SQLITE_DONE;
    if (!done) {
        rows.clear();
        failure(sqlite3_extended_errcode(m_handle));
    }
    const int columns = done ? sqlite3_column_count(q) : 0;
    for (int i = 0; i < columns; ++i) names << QString::fromUtf8(sqlite3_column_name(q, i));
    sqlite3_reset(q); // a read left open would hold the other stations' writes
    sqlite3_clear_bindings(q);
    m_hasRead = m_hasRead || done;
    return done;
}

QStringList SqliteEngine::userTables()
{
    QStringList tables;
    QSqlQuery q(m_db);
    if (q.exec("SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%'"))
        while (q.next()) tables << q.value(0).toString();
    return tables;
}

QString SqliteEngine::translate(const QString &statement) const
{
    return translateTransactSql(statement);
}

QString SqliteEngine::alterColumn(const QString &table, const QString &column,
                                  const QString &type) const
{
    // Column types bind no values here; a widened CHAR column gets the blanks
    // that SQL Server pads it with, so its values have the new width.
    static const QRegularExpression fixedText("^CHAR\\s*\\(\\s*(\\d+)",
                                              QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = fixedText.match(type);
    if (!m.hasMatch())
        return QString();
    const int width = m.captured(1).toInt();
    return QString("UPDATE %1 SET %2 = substr(%2 || '%3', 1, %4)")
        .arg(table, column, QString(width, ' '))
        .arg(width);
}

DbError SqliteEngine::errorOf(const QSqlError &error) const
{
    DbError e{kErrCommand, error.databaseText().isEmpty() ? error.text() : error.databaseText(),
              "SQLite"};
    const int code = error.nativeErrorCode().toInt() & 0xff;
    static const QRegularExpression noTable("no such table: (?:\\w+\\.)?(\\w+)");
    const QRegularExpressionMatch m = noTable.match(e.text);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        e = {kErrProvider, "The database is locked by another program: " + e.text, "SQLite",
             DbFault::Busy};
    else if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB)
        e = {kErrProvider, e.text, "SQLite", DbFault::Damaged};
    else if (m.hasMatch() && m_hasRead && QFileInfo(m_db.databaseName()).size() == 0)
        e = {kErrProvider, e.text, "SQLite", DbFault::Damaged}; // the file was cut under us
    else if (m.hasMatch())
        e.text = "Invalid object name '" + m.captured(1) + "'.";
    else if (e.text.contains("UNIQUE constraint failed"))
        e.text = "Cannot insert duplicate key row. " + e.text;
    else if (error.type() == QSqlError::ConnectionError ||
             QList<int>{SQLITE_PERM, SQLITE_NOMEM, SQLITE_READONLY, SQLITE_IOERR, SQLITE_FULL,
                        SQLITE_CANTOPEN, SQLITE_PROTOCOL}
                 .contains(code))
        e.number = kErrProvider; // the file, not the statement, failed
    return e;
}

DbEngine::RowLocator SqliteEngine::rowLocator() const
{
    return {"rowid", "%1 IS ? COLLATE BINARY"};
}

const char *const SqlServerEngine::kDatabasesQuery =
    "SELECT name FROM sys.databases WHERE database_id > 4 ORDER BY name";
const char *const SqlServerEngine::kTablesQuery =
    "SELECT name FROM sys.tables WHERE is_ms_shipped = 0 ORDER BY name";

SqlServerEngine::SqlServerEngine() = default;

SqlServerEngine::~SqlServerEngine()
{
    forgetPrepared();
    m_db = QSqlDatabase();
    m_admin = QSqlDatabase();
    for (const QString &name : {m_connection, m_adminConnection})
        if (!name.isEmpty())
            QSqlDatabase::removeDatabase(name);
}

namespace {
// An ODBC value in braces, so that ";" and "=" in a password stay part of it.
QString braced(const QString &v)
{
    return '{' + QString(v).replace('}', "}}") + '}';
}
} // namespace

QString SqlServerEngine::connectionString(const QString &server, const QString &database,
                                          const QString &user, const QString &password)
{
#ifdef Q_OS_WIN
    const QString driver = "DRIVER={SQL Server};";
    const QString extra;
#else
    const QString driver = "DRIVER={FreeTDS};";
    const QString extra = ";TDS_Version=7.4;ClientCharset=UTF-8";
#endif
    return driver + "SERVER=" + braced(server) + ";DATABASE=" + braced(database) +
           ";UID=" + braced(user) + ";PWD=" + braced(password) + extra;
}

int SqlServerEngine::connectServer(const QString &server, const QString &user,
                                   const QString &password, DbError &error)
{
    m_server = server, m_user = user, m_password = password;
    // The server's own database is for finding the store's; the data connection
    // stays closed, so the first data action opens the store's database.
    m_admin = QSqlDatabase();
    if (!m_adminConnection.isEmpty())
        QSqlDatabase::removeDatabase(m_adminConnection);
    m_adminConnection = uniqueConnection("mssql-admin");
    m_admin = QSqlDatabase::addDatabase("QODBC", m_adminConnection);
    m_admin.setDatabaseName(connectionString(m_server, "master", m_user, m_password));
    m_admin.setConnectOptions("SQL_ATTR_LOGIN_TIMEOUT=25");
    if (m_admin.open())
        return 1;
    error = errorOf(m_admin.lastError());
    error.number = kErrProvider;
    return 0;
}

QStringList SqlServerEngine::databaseNames()
{
    QStringList names;
    QSqlQuery q(m_admin);
    if (q.exec(kDatabasesQuery))
        while (q.next()) names << q.value(0).toString();
    return names;
}

bool SqlServerEngine::open(const QString &database, DbError &error)
{
    forgetPrepared();
    m_db = QSqlDatabase();
    if (!m_connection.isEmpty())
        QSqlDatabase::removeDatabase(m_connection);
    m_connection = uniqueConnection("mssql");
    m_db = QSqlDatabase::addDatabase("QODBC", m_connection);
    m_db.setDatabaseName(connectionString(m_server, database, m_user, m_password));
    m_db.setConnectOptions("SQL_ATTR_LOGIN_TIMEOUT=25");
    if (m_db.open()) {
        QSqlQuery(m_db).exec(sessionSetup());
        return true;
    }
    error = errorOf(m_db.lastError());
    error.number = kErrProvider;
    return false;
}

QStringList SqlServerEngine::userTables()
{
    QStringList tables;
    QSqlQuery q(m_db);
    if (q.exec(kTablesQuery))
        while (q.next()) tables << q.value(0).toString();
    return tables;
}

QString SqlServerEngine::sessionSetup()
{
    return QString("SET LOCK_TIMEOUT %1").arg(kLockWaitMs);
}

namespace {

// The server's numbers that are no refused statement: the suite's provider
// reported them as its own failure, and nothing passes over them.
struct ServerNumber {
    int native;
    DbFault fault;
};
const ServerNumber kServerFailures[] = {
    {1205, DbFault::Busy},   // chosen as the victim of a deadlock
    {1222, DbFault::Busy},   // lock request time out period exceeded
    {605, DbFault::Damaged}, // a page is not where its table says
    {823, DbFault::Damaged}, // the operating system failed a read of the file
    {824, DbFault::Damaged}, // a page read fails its checksum
    {829, DbFault::Damaged}, // a page is marked restore pending
    {229, DbFault::None},    // permission denied on an object
    {230, DbFault::None},    // permission denied on a column
    {262, DbFault::None},    // permission denied to create
    {4060, DbFault::None},   // the database of the login cannot be opened
    {18456, DbFault::None},  // login failed
};

// A link to the server that dropped, as the platform's own driver numbers it: the socket
// numbers and the network library's.
bool isNetworkNumber(int native)
{
    static const std::set<int> network{2, 11, 17, 53, 64, 233, 121, 1231};
    return (native >= 10000 && native < 12000) || network.count(native) > 0;
}

// ODBC names every driver and component in brackets before a message.
QString withoutComponents(const QString &text)
{
    static const QRegularExpression components("(?:^|(?<=\\s))(?:\\[[^\\[\\]]*\\])+");
    return QString(text).remove(components).trimmed();
}

} // namespace

DbError SqlServerEngine::errorOf(const QSqlError &error) const
{
    DbError e{
        kErrCommand,
        withoutComponents(error.databaseText().isEmpty() ? error.text() : error.databaseText()),
        name()};
    bool ok = false;
    const int native = error.nativeErrorCode().toInt(&ok);
    // The server refused the statement: what the provider reported as errors in
    // the command. No number of the server, or one of the driver's own (FreeTDS
    // numbers them from 20000), is a failure of the connection.
    if (!ok || native <= 0 || (native >= 20000 && native < 20100) || isNetworkNumber(native) ||
        error.type() == QSqlError::ConnectionError)
        e.number = kErrProvider;
    for (const ServerNumber &failure : kServerFailures) {
        if (failure.native == native) {
            e.number = kErrProvider;
            e.fault = failure.fault;
        }
    }
    return e;
}

DbEngine::RowLocator SqlServerEngine::rowLocator() const
{
    return {QString(), "%1=?"};
}

const std::vector<DbEngineKind> &dbEngineKinds()
{
    static const std::vector<DbEngineKind> kinds{
        {"", "SQL Server", false,
         [](const QString &) -> std::unique_ptr<DbEngine> {
             return std::make_unique<SqlServerEngine>();
         }},
        {"SQLite", "Embedded (a file in the data folder)", true,
         [](const QString &folder) -> std::unique_ptr<DbEngine> {
             return std::make_unique<SqliteEngine>(folder);
         }},
        {"PostgreSQL", "PostgreSQL server", false,
         [](const QString &) -> std::unique_ptr<DbEngine> {
             return std::make_unique<PostgresEngine>();
         }},
    };
    return kinds;
}

const DbEngineKind &embeddedDbEngine()
{
    for (const DbEngineKind &kind : dbEngineKinds()) {
        if (kind.embedded)
            return kind;
    }
    return dbEngineKinds().front();
}

std::unique_ptr<DbEngine> makeDbEngine(const QString &engineName, const QString &dataFolder)
{
    for (const DbEngineKind &kind : dbEngineKinds()) {
        if (!kind.setting.isEmpty() &&
            !engineName.trimmed().compare(kind.setting, Qt::CaseInsensitive))
            return kind.make(dataFolder);
    }
    return dbEngineKinds().front().make(dataFolder); // anything else is SQL Server
}
