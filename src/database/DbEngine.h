#pragma once
#include "database/SqlRead.h"
#include <QHash>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <functional>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;
class DbEngine;
class SocketWatch;

// What a store user is told about a failure: another station holds the data,
// the database itself is damaged, or its server cannot be reached; anything else
// is a plain failure.
enum class DbFault { None, Busy, Damaged, Offline };

// An error as the suite's code sees it: the provider's number and text.
struct DbError {
    qint64 number = 0;
    QString text;
    QString source;
    DbFault fault = DbFault::None;
    bool isError() const { return number != 0 || !text.isEmpty(); }
};

// The numbers the engine layer tests.
inline constexpr qint64 kErrTableNotFound = 3078;
inline constexpr qint64 kErrCommand = 0x80040E14;  // a statement the server refused
inline constexpr qint64 kErrNoValue = 0x80040E21;  // a value or column the server refused
inline constexpr qint64 kErrProvider = 0x80004005; // connection and provider failures

// The longest one action of the user waits for a lock that another station holds.
inline constexpr int kLockWaitMs = 3000;
// The longest a statement runs on a server before it is given up.
inline constexpr int kStatementLimitMs = 4000;

// Marks one statement for the engine, from its start to its end.
class DbStatement {
public:
    explicit DbStatement(DbEngine &engine);
    ~DbStatement();
    DbStatement(const DbStatement &) = delete;
    DbStatement &operator=(const DbStatement &) = delete;

private:
    DbEngine &m_engine;
};

// Applies `change` to the parts of a statement outside its quoted values, so that
// no text inside a value is ever taken for SQL.
QString sqlOutsideLiterals(const QString &statement,
                           const std::function<QString(const QString &)> &change);
// The statements of a translated text: split at the line feeds outside values.
QStringList sqlStatements(const QString &text);

// One database engine: how to reach the server and its databases, and how the
// Transact-SQL that the engine layer builds runs on it. SQL Server takes the
// statements as they are; other engines translate them just before execution.
class DbEngine {
public:
    virtual ~DbEngine();
    virtual QString name() const = 0;

    // The management step: 1 when the server runs, with `error` set otherwise.
    virtual int connectServer(const QString &server, const QString &user, const QString &password,
                              DbError &error) = 0;
    // The databases of the server, system databases left out.
    virtual QStringList databaseNames() = 0;
    // Opens the data connection to a database; false with `error` set when it fails.
    virtual bool open(const QString &database, DbError &error) = 0;
    bool isOpen() const;
    QSqlDatabase &db() { return m_db; }
    // The user tables of the open database.
    virtual QStringList userTables() = 0;

    // The statement as this engine runs it; several statements are separated by
    // line feeds, which the statements of the suite never hold.
    virtual QString translate(const QString &statement) const;
    // The provider's number and text for an error of this engine.
    virtual DbError errorOf(const QSqlError &error) const;
    // Statements that change exactly one row, the one whose columns hold `original`:
    // placeholders for the new values first, then for the original values that are
    // not NULL; a NULL original is matched with IS NULL.
    QString updateOneRow(const QString &table, const QStringList &setColumns,
                         const QStringList &allColumns, const QVector<QVariant> &original) const;
    QString deleteOneRow(const QString &table, const QStringList &allColumns,
                         const QVector<QVariant> &original) const;
    // How this engine finds one row among equal ones: the column that names a
    // row (empty: the statement itself is limited to one row, as "TOP (1)"), and
    // the condition that a column holds its original value.
    struct RowLocator {
        QString column;
        QString equalForm;
    };
    virtual RowLocator rowLocator() const = 0;

    // Runs a read, prepared once per connection for its shape, its values bound
    // to it: every value of a key reuses one prepared statement. The column
    // names and rows (with `maxRows` above 0, at most that many and one more), or
    // false with `error` set.
    virtual bool read(const SqlRead &statement, QStringList &names,
                      QVector<QVector<QVariant>> &rows, int maxRows, QSqlError &error);
    // Prepared statements end with their connection, and with a change of a table.
    virtual void forgetPrepared() { m_prepared.clear(); }

    // What a statement meets when the data connection is not open.
    virtual DbError notOpenError() const;

    // A column's name as the table was made with it; engines that fold names
    // to one case give them back as declared.
    virtual QString columnName(const QString &fieldName) const { return fieldName; }

    // "like" and the pattern that finds `value` anywhere in a column: every
    // character of the value is literal, only the two wildcards around it match.
    SqlRead likeContains(const QString &value) const;

    // A new action of the user: it may wait kLockWaitMs for locks again.
    virtual void resetLockWait() { m_lockWaitLeftMs = kLockWaitMs; }
    // Around each statement: an engine whose server may stop answering gives
    // up the wait. A change of the tables is not bounded, as it may take long.
    virtual void statementStarts() {}
    virtual void statementEnds() {}
    virtual void schemaChange(bool /*starts*/) {}

    // The machine of the server the settings name; empty when it cannot be cut from it.
    virtual QString machineOf(const QString &server) const;
    // A line for 52.txt on what of the server's name this engine leaves unused.
    virtual QString serverNote(const QString &) const { return QString(); }

protected:
    // A prepared statement that a change of its table made unusable.
    virtual bool isStalePlan(const QSqlError &) const { return false; }
    // A read as it is prepared: what it is found by among the prepared ones, its
    // values in order, and its text in this engine's dialect when it had to be
    // translated to be found.
    struct ReadShape {
        QString key;
        QStringList values;
        QString text;
    };
    ReadShape readShape(const SqlRead &read) const;
    // The shape in this engine's dialect: translated only for a shape not yet prepared.
    QString dialectOf(const ReadShape &shape) const;
    // So many shapes are statements with numbers in their text, one per number.
    static constexpr int kMaxPrepared = 500;
    // The characters that the engine's LIKE takes for patterns.
    virtual QString likeSpecials() const { return "%_"; }

    // The Transact-SQL of the engine layer for an engine that lacks its dialect:
    // TOP 1, LEFT, ltrim(ItemID), ALTER COLUMN, clustered and per-table index
    // names, sp_RENAME. The hooks below say how this engine writes them.
    QString translateTransactSql(const QString &statement) const;
    // A computed text that compares as the text columns do.
    virtual QString caseBlind(const QString &expression) const;
    // LEFT(text, count) as the replacement of a match of text (1) and count (2).
    virtual QString leftOf() const { return "LEFT(\\1,\\2)"; }
    // Statements that give a column a new type; empty when nothing is to be done.
    virtual QString alterColumn(const QString &, const QString &, const QString &) const
    {
        return QString();
    }
    // "column=?" for each column, comma separated.
    static QString assignments(const QStringList &columns);
    // Column conditions that find the one row holding `original`.
    static QString rowCondition(const QStringList &columns, const QVector<QVariant> &original,
                                const QString &equalForm);

    QSqlDatabase m_db;
    int m_lockWaitLeftMs = kLockWaitMs;
    bool m_hasRead = false; // a read of this connection found its table

private:
    QSqlQuery *preparedRead(const SqlRead &statement, QSqlError &error);
    QHash<QString, std::shared_ptr<QSqlQuery>> m_prepared; // by the statement's shape
};

// The embedded engine: one SQLite file per database in the data folder.
class SqliteEngine : public DbEngine {
public:
    explicit SqliteEngine(QString folder);
    ~SqliteEngine() override;
    QString name() const override { return "SQLite"; }
    int connectServer(const QString &server, const QString &user, const QString &password,
                      DbError &error) override;
    QStringList databaseNames() override;
    bool open(const QString &database, DbError &error) override;
    QStringList userTables() override;
    QString translate(const QString &statement) const override;
    DbError errorOf(const QSqlError &error) const override;
    RowLocator rowLocator() const override;

    // The file that holds a database.
    QString fileOf(const QString &database) const;
    // Makes an empty database file, for the demo and the tests.
    static bool create(const QString &file, QString *error);
    // Reads through the library itself: its statements prepare themselves again
    // when another station changes a table, which the query layer's cannot.
    bool read(const SqlRead &statement, QStringList &names, QVector<QVector<QVariant>> &rows,
              int maxRows, QSqlError &error) override;
    void forgetPrepared() override;

protected:
    QString leftOf() const override { return "substr(\\1,1,\\2)"; }
    QString alterColumn(const QString &table, const QString &column,
                        const QString &type) const override;

private:
    QString m_folder;
    QString m_connection;
    sqlite3 *m_handle = nullptr;                                // the connection's, owned by it
    QHash<QString, std::shared_ptr<sqlite3_stmt>> m_statements; // by the statement's shape
};

// SQL Server through ODBC (FreeTDS here, the vendor's driver on Windows).
class SqlServerEngine : public DbEngine {
public:
    SqlServerEngine();
    ~SqlServerEngine() override;
    QString name() const override { return "SQLServer"; }
    int connectServer(const QString &server, const QString &user, const QString &password,
                      DbError &error) override;
    QStringList databaseNames() override;
    bool open(const QString &database, DbError &error) override;
    QStringList userTables() override;
    DbError errorOf(const QSqlError &error) const override;
    RowLocator rowLocator() const override;

    static QString connectionString(const QString &server, const QString &database,
                                    const QString &user, const QString &password);
    static const char *const kDatabasesQuery;
    static const char *const kTablesQuery;
    // Run on every new connection: a blocked statement waits kLockWaitMs at most.
    static QString sessionSetup();

protected:
    QString likeSpecials() const override { return "%_["; }

private:
    QString m_server, m_user, m_password;
    QString m_connection;
    QSqlDatabase m_admin; // on "master", for the list of databases
    QString m_adminConnection;
};

// PostgreSQL through libpq: "Server" is host[:port], the database one of the server's.
class PostgresEngine : public DbEngine {
public:
    PostgresEngine();
    ~PostgresEngine() override;
    QString name() const override { return "PostgreSQL"; }
    int connectServer(const QString &server, const QString &user, const QString &password,
                      DbError &error) override;
    QStringList databaseNames() override;
    bool open(const QString &database, DbError &error) override;
    QStringList userTables() override;
    QString translate(const QString &statement) const override;
    DbError errorOf(const QSqlError &error) const override;
    RowLocator rowLocator() const override;
    void resetLockWait() override;
    void statementStarts() override;
    void statementEnds() override;
    void schemaChange(bool starts) override;
    // The management connection to the server's own database, once connectServer succeeded.
    QSqlDatabase &admin() { return m_admin; }
    QString machineOf(const QString &server) const override;
    QString serverNote(const QString &server) const override;
    QString columnName(const QString &fieldName) const override;
    DbError notOpenError() const override;

    // The host and port of a server's name: host[:port], an instance part left out.
    static std::pair<QString, int> hostAndPort(const QString &server);
    static const char *const kDatabasesQuery;
    static const char *const kTablesQuery;
    // Made in every database the program opens: text compares as SQL Server's does.
    static const char *const kCollation;
    // Makes an empty database on the server, for the demo and the tests.
    static bool create(const QString &server, const QString &user, const QString &password,
                       const QString &database, QString *error);

protected:
    bool isStalePlan(const QSqlError &error) const override;
    QString caseBlind(const QString &expression) const override;
    QString leftOf() const override { return "(LEFT(\\1,\\2)::bpchar COLLATE ZELCI)"; }
    QString alterColumn(const QString &table, const QString &column,
                        const QString &type) const override;

private:
    QSqlDatabase connection(const QString &name, const QString &database) const;
    bool openConnection(const QString &database, DbError &error);
    QString m_server, m_user, m_password, m_database;
    QString m_connection, m_adminConnection;
    QSqlDatabase m_admin;
    // Statements that keep the declared case of the column names a statement
    // makes, as column comments, since the server folds them to lower case.
    QString keepColumnNames(const QString &statement) const;
    void loadColumnNames();
    mutable QHash<QString, QString> m_columnNames; // lower case -> as declared
    mutable bool m_lost = false; // the server dropped the connection: open it again
    DbError m_reopenError;       // why it could not be opened again
    bool m_schemaChange = false;
    // Ends the wait for a server that neither answers nor closes the connection.
    std::unique_ptr<SocketWatch> m_watch;
    bool connectionEnded();
};

// An engine the program has, as the settings store names it. dbEngineKinds() is
// the one list of them: a new engine is added there and nowhere else.
struct DbEngineKind {
    QString setting; // the value of "Engine"; empty for SQL Server, as the suite keeps it
    QString label;   // as the user sees it
    bool embedded;   // a file in the data folder rather than a server
    std::unique_ptr<DbEngine> (*make)(const QString &dataFolder);
};
const std::vector<DbEngineKind> &dbEngineKinds();
const DbEngineKind &embeddedDbEngine();

// The engine the settings store names ("Engine" in section "DATABASE"): "SQLite"
// for the embedded one; SQL Server when the key is missing, as the suite has it.
std::unique_ptr<DbEngine> makeDbEngine(const QString &engineName, const QString &dataFolder);
