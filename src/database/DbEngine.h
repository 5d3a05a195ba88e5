#pragma once
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <functional>
#include <memory>
#include <vector>

// What a store user is told about a failure: another station holds the data, or
// the database itself is damaged; anything else is a plain failure.
enum class DbFault { None, Busy, Damaged };

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
    virtual QString updateOneRow(const QString &table, const QStringList &setColumns,
                                 const QStringList &allColumns,
                                 const QVector<QVariant> &original) const = 0;
    virtual QString deleteOneRow(const QString &table, const QStringList &allColumns,
                                 const QVector<QVariant> &original) const = 0;

    // "like" and the pattern that finds `value` anywhere in a column: every
    // character of the value is literal, only the two wildcards around it match.
    QString likeContains(const QString &value) const;

    // A new action of the user: it may wait kLockWaitMs for locks again.
    void resetLockWait() { m_lockWaitLeftMs = kLockWaitMs; }

protected:
    // The characters that the engine's LIKE takes for patterns.
    virtual QString likeSpecials() const { return "%_"; }
    // Column conditions that find the one row holding `original`.
    static QString rowCondition(const QStringList &columns, const QVector<QVariant> &original,
                                const QString &equalForm);

    QSqlDatabase m_db;
    int m_lockWaitLeftMs = kLockWaitMs;
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
    QString updateOneRow(const QString &table, const QStringList &setColumns,
                         const QStringList &allColumns,
                         const QVector<QVariant> &original) const override;
    QString deleteOneRow(const QString &table, const QStringList &allColumns,
                         const QVector<QVariant> &original) const override;

    // The file that holds a database.
    QString fileOf(const QString &database) const;
    // Makes an empty database file, for the demo and the tests.
    static bool create(const QString &file, QString *error);

private:
    QString m_folder;
    QString m_connection;
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
    QString updateOneRow(const QString &table, const QStringList &setColumns,
                         const QStringList &allColumns,
                         const QVector<QVariant> &original) const override;
    QString deleteOneRow(const QString &table, const QStringList &allColumns,
                         const QVector<QVariant> &original) const override;

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
