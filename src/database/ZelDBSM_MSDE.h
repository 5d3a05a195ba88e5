#pragma once
#include "database/SqlRead.h"
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <array>
#include <memory>
#include <vector>

class DbEngine;

// One table as the application registers it.
struct TableDescriptor {
    QString sID;
    QString sFileName;
    QString sTableName;
    QString sTitle;
    bool bOpen = false;
    qint16 iReserved1 = 0;
    qint16 iKeySegments = 0;
    qint16 iReserved2 = 0;
    QString sLastError;
    QString sCreateSQL;
    QString sIndexSQL; // statements separated by semicolons
};

// The current row set of a table: the rows a statement gave, a position among
// them, and the changes made to the current row since it was read.
class Recordset {
public:
    bool isOpen() const { return m_open; }
    // The statement that gave the rows, as it is shown.
    QString Source() const;
    QString table() const { return m_table; }
    const QStringList &names() const { return m_names; }
    int RecordCount() const { return static_cast<int>(m_rows.size()); }
    bool BOF() const { return m_rows.isEmpty() || m_position < 0; }
    bool atEOF() const { return m_rows.isEmpty() || m_position >= m_rows.size(); }
    void MoveFirst() { m_position = 0; }
    void MoveNext() { m_position = std::min<int>(m_position + 1, m_rows.size()); }
    void MovePrevious() { m_position = std::max(m_position - 1, -1); }
    void MoveLast() { m_position = static_cast<int>(m_rows.size()) - 1; }

    // -1 when the table has no such column.
    int fieldIndex(const QVariant &vField) const;
    QVariant value(int column) const;
    void setValue(int column, const QVariant &v);
    bool hasChanges() const { return !m_changed.isEmpty(); }

    void reset(const SqlRead &source, const QString &table, const QStringList &names,
               QVector<QVector<QVariant>> rows);
    void release() { *this = Recordset(); }
    const QVector<QVariant> &originalRow() const { return m_original; }
    QVector<QVariant> currentRow() const;
    const QVector<QVector<QVariant>> &rows() const { return m_rows; }
    QList<int> changedColumns() const { return m_changed; }
    void acceptChanges();

private:
    bool m_open = false;
    SqlRead m_source;
    QString m_table;
    QStringList m_names;
    QVector<QVector<QVariant>> m_rows;
    int m_position = -1;
    QVector<QVariant> m_original;
    QList<int> m_changed;
};

// The application's table routines that the engine calls; the application
// registers them at start, so the engine never reaches above its floor.
struct DBSM_Dispatch {
    void (*KeyValues)(qint16 iFile, qint16 iKey) = nullptr;
    void (*RowToRecord)(qint16 iFile) = nullptr;
    void (*RecordToRow)(qint16 iFile) = nullptr;
    QString (*InsertValues)(qint16 iFile) = nullptr;
};
void gpDBSM_RegisterDispatch(const DBSM_Dispatch &dispatch);
// The data folder, which holds the embedded database and the failure log. The
// settings sit beside the engine, not below it: the application registers at start
// where the folder is read.
void gpDBSM_RegisterDataFolder(QString (*dataFolder)());

// Operation codes of gfbDBSM_Record.
enum DBSM_Op : qint16 {
    opOpen = 0,
    opClose = 1,
    opInsert = 2,
    opUpdate = 3,
    opDelete = 4,
    opEqual = 5,
    opNext = 6,
    opPrevious = 7,
    opGreater = 8,
    opGreaterEqual = 9,
    opLess = 10,
    opLessEqual = 11,
    opFirst = 12,
    opLast = 13,
    opBeginTrans = 19,
    opEndTrans = 20,
    opResetReserved = 21,
    opNextPos = 24,
    opFirstPos = 33,
    opLastPos = 34,
    opPreviousPos = 35,
    opBySQL = 36,
};

extern std::vector<TableDescriptor> gTables;
extern std::vector<Recordset> gRecordsets;
extern std::array<qint16, 10> giKeyField;   // 1 to 9
extern std::array<QVariant, 10> gvKeyValue; // 1 to 9, as the record holds them
extern bool gbKeyFromBuffer;
extern QString gsInsertError;
extern bool gbInsertLog;
extern qint32 glInsertLogCount;
extern QString gsDBName, gsServer, gsDBUser, gsDBPassword;
extern bool gbConnected;
extern qint16 giFileCount;

// Where the database is, as the settings store keeps it (section "DATABASE").
struct DBSM_Settings {
    QString sEngine, sDBName, sServer, sUser, sPassword;
};
DBSM_Settings gfDBSM_Settings();
// Writes them under the suite's key names; an empty engine leaves no "Engine" key.
void gpDBSM_SaveSettings(const DBSM_Settings &settings);
// Nothing on this workstation names a database yet: no engine and no server.
bool gfbDBSM_Unconfigured();
// Reaches the server the settings name and looks for the database there, apart
// from the application's connection. Empty when both are there, otherwise what
// went wrong, in words for the user.
QString gfsDBSM_CheckServer(const DBSM_Settings &settings);

// Connection and discovery.
bool gfbDBSM_Connect();
void gpDBSM_OpenConnection(const QString &sDatabase);
bool gfbDBSM_TableExists(const QString &sTable);
QString gfsDBSM_TableList(const QString &sPrefix);
DbEngine *gpDBSM_Engine();
// Closes the connection and forgets the tables; the next start begins afresh.
void gpDBSM_Disconnect();

// Keyed record operations.
bool gfbDBSM_Record(qint16 iFile, qint16 iOperation, qint16 iKey, bool bRow, bool bMore,
                    QString &sSQL);
bool gfbDBSM_OpenTable(qint16 iFile, bool bOwner);
bool gfbDBSM_CreateTable(qint16 iFile);
QVariant gfvDBSM_Field(qint16 iFile, const QVariant &vField);
QString gfsDBSM_FieldName(qint16 iFile, const QVariant &vField);
void gpDBSM_SetField(qint16 iFile, const QVariant &vField, const QVariant &vValue);
// The current key: segment count, then each segment's column number and value.
void gpDBSM_SetKey(qint16 iFile, qint16 iSegments,
                   const QList<std::pair<qint16, QVariant>> &segments);
// Every quote is doubled (or, with bDouble False, made a blank), so a value can
// only ever be a value.
QString gfsDBSM_SqlText(const QVariant &vValue, bool bDouble);
// `sColumn` and the condition that finds `sValue` anywhere in it; every typed
// character is literal, only the wildcards around the value match.
SqlRead gfsDBSM_LikeContains(const QString &sColumn, const QString &sValue);
qint32 glDBSM_Count(qint16 iFile, QString &sTable);
// Whether a count of the table would be above 0, without counting every row.
bool gfbDBSM_HasRows(qint16 iFile);
// With `maxRows` above 0 at most that many rows and one more are fetched.
bool gfbDBSM_Select(QString &sSQL, qint16 iFile, bool bNoBind, int maxRows = 0);
bool gfbDBSM_Select(const SqlRead &read, qint16 iFile, bool bNoBind, int maxRows = 0);
// A read of a table's rows that leaves its row set and key buffer as they are:
// the column names and the rows, or false when the database could not be read,
// which is told as any read's fault is.
bool gfbDBSM_Rows(qint16 iFile, const SqlRead &read, QStringList &names,
                  QVector<QVector<QVariant>> &rows);
// The column by which the engine tells apart rows that are equal on a key, in
// the order they were added ("rowid"); empty when the engine has none.
QString gfsDBSM_RowOrderColumn();
qint32 glDBSM_Execute(const QString &sSQL);
bool gfbDBSM_AddColumn(qint16 iFile, const QString &sName, const QString &sType);
bool gfbDBSM_RenameColumn(const QString &sTable, const QString &sOld, const QString &sNew);

// One action of the user on the database: a key press, a click, the start. The
// first fault of the engine inside it goes to PVSW.log and is told in one box,
// in the user's words, when the outermost action ends; every statement after it
// fails at once, so the action neither waits again nor repeats the box. Outside
// an action each failing call is told on its own.
class DbAction {
public:
    DbAction();
    ~DbAction();
    DbAction(const DbAction &) = delete;
    DbAction &operator=(const DbAction &) = delete;
};
// The action under way has met a fault: its reads found nothing because they
// could not read.
bool gfbDBSM_ActionFailed();

// Where the connection log and the insert log go: the program's folder, or a
// folder of the user's when the program's folder cannot be written.
QString gfsDBSM_LogFolder();

// The statements of the keyed operations; the key's values are bound.
namespace dbsm {
SqlRead comparison(const QString &table, const QStringList &keys, const QStringList &values,
                   const QString &op);
SqlRead rowComparison(const QString &table, const QString &column, const QString &value,
                      const QString &op);
QString getFirst(const QString &table, const QStringList &keys, bool noKey);
QString getLast(const QString &table, const QStringList &keys, bool noKey,
                const QString &firstColumn);
SqlRead getNext(const QString &table, const QStringList &keys, const QStringList &values,
                bool previous);
// "ItemID" outside quoted values becomes "ltrim(ItemID)".
SqlRead trimItemId(SqlRead read);
} // namespace dbsm
