#include "common/TextFile.h"
#include "database/DbEngine.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/ZelDBSM_MSDE_internal.h"
#include "platform/Dialogs.h"
#include <QFile>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>

std::array<qint16, 10> giKeyField{};
std::array<QVariant, 10> gvKeyValue{};
bool gbKeyFromBuffer = false;
QString gsInsertError;
bool gbInsertLog = false;
qint32 glInsertLogCount = 0;

namespace {

DBSM_Dispatch &dispatch()
{
    static DBSM_Dispatch d;
    return d;
}

} // namespace

void gpDBSM_RegisterDispatch(const DBSM_Dispatch &d)
{
    dispatch() = d;
}

// ---- Recordset ----

int Recordset::fieldIndex(const QVariant &vField) const
{
    if (vField.typeId() == QMetaType::QString) {
        for (int i = 0; i < m_names.size(); ++i) {
            if (!m_names[i].compare(vField.toString(), Qt::CaseInsensitive))
                return i;
        }
        return -1;
    }
    const int i = vField.toInt();
    return i >= 0 && i < m_names.size() ? i : -1;
}

QVariant Recordset::value(int column) const
{
    if (atEOF() || BOF() || column < 0 || column >= m_names.size())
        return QVariant();
    return m_rows[m_position].value(column);
}

void Recordset::setValue(int column, const QVariant &v)
{
    if (atEOF() || BOF() || column < 0 || column >= m_names.size())
        return;
    if (m_original.isEmpty())
        m_original = m_rows[m_position];
    m_rows[m_position][column] = v;
    if (!m_changed.contains(column))
        m_changed << column;
}

QString Recordset::Source() const
{
    return sqlText(m_source);
}

void Recordset::reset(const SqlRead &source, const QString &table, const QStringList &names,
                      QVector<QVector<QVariant>> rows)
{
    m_open = true;
    m_source = source;
    m_table = table;
    m_names = names;
    m_rows = std::move(rows);
    m_position = 0;
    m_original.clear();
    m_changed.clear();
}

QVector<QVariant> Recordset::currentRow() const
{
    return atEOF() || BOF() ? QVector<QVariant>() : m_rows[m_position];
}

void Recordset::acceptChanges()
{
    m_original.clear();
    m_changed.clear();
}

// ---- helpers ----

namespace {

bool validFile(qint16 iFile)
{
    return iFile >= 0 && iFile < static_cast<int>(gRecordsets.size());
}

// Opens a read; the rows and column names go into `rs`.
bool openRows(const SqlRead &statement, const QString &table, Recordset &rs, DbError &error,
              int maxRows = 0)
{
    DbEngine *e = gpDBSM_Engine();
    if (!e || !e->isOpen()) {
        error = mpDBSM_NotOpen();
        return false;
    }
    if (!mpDBSM_MayRun(error))
        return false;
    QSqlError failure;
    QStringList names;
    QVector<QVector<QVariant>> rows;
    if (!e->read(statement, names, rows, maxRows, failure)) {
        error = e->errorOf(failure);
        return false;
    }
    for (QString &name : names) name = e->columnName(name);
    rs.reset(statement, table, names, std::move(rows));
    return true;
}

QStringList columnNames(qint16 iFile)
{
    if (gRecordsets[iFile].names().isEmpty()) {
        Recordset probe;
        DbError e;
        if (openRows(QString("SELECT TOP 1 * FROM " + gTables[iFile].sTableName),
                     gTables[iFile].sTableName, probe, e))
            return probe.names();
    }
    return gRecordsets[iFile].names();
}

QStringList keyNames(qint16 iFile)
{
    const QStringList names = columnNames(iFile);
    QStringList keys;
    for (int i = 1; i <= gTables[iFile].iKeySegments && i <= 9; ++i)
        keys << names.value(giKeyField[i]);
    return keys;
}

QStringList keyValues(qint16 iFile)
{
    QStringList values;
    for (int i = 1; i <= gTables[iFile].iKeySegments && i <= 9; ++i)
        values << gvKeyValue[i].toString();
    return values;
}

void keyValuesOf(qint16 iFile, qint16 iKey)
{
    if (dispatch().KeyValues)
        dispatch().KeyValues(iFile, iKey);
}

bool notFound(qint16 iFile)
{
    gRecordsets[iFile].release();
    gfbDBSM_OpenTable(iFile, false);
    return false;
}

// Opens a read: rows make it the table's row set, none take the not-found path.
// A failure of the database sets `faulted`.
bool readRows(qint16 iFile, const SqlRead &statement, bool *faulted = nullptr)
{
    Recordset rs;
    DbError e;
    if (!openRows(statement, gTables[iFile].sTableName, rs, e)) {
        mpDBSM_Fault(sqlText(statement), e);
        if (faulted)
            *faulted = true;
        return false;
    }
    if (rs.RecordCount() == 0)
        return notFound(iFile);
    gRecordsets[iFile] = rs;
    return true;
}

const char *opText(qint16 code)
{
    switch (code) {
    case opOpen:
        return "Open";
    case opClose:
        return "Close";
    case opInsert:
        return "Insert";
    case opUpdate:
        return "Update";
    case opDelete:
        return "Delete";
    case opEqual:
        return "=";
    case opNext:
    case opNextPos:
        return "Get Next";
    case opPrevious:
    case opPreviousPos:
        return "Get Previous";
    case opGreater:
        return ">";
    case opGreaterEqual:
        return ">=";
    case opLess:
        return "<";
    case opLessEqual:
        return "<=";
    case opFirst:
    case opFirstPos:
        return "Get First";
    case opLast:
    case opLastPos:
        return "Get Last";
    case opBeginTrans:
        return "Begin Trans";
    case opEndTrans:
        return "End Trans";
    case opResetReserved:
        return "21";
    case opBySQL:
        return "BySQL";
    default:
        return "";
    }
}

bool isComparison(const QString &t)
{
    return t == "=" || t == ">" || t == ">=" || t == "<" || t == "<=";
}

bool comparisonRead(qint16 iFile, qint16 iKey, bool bRow, const QString &op, QString &sSQL)
{
    if (bRow && !gbKeyFromBuffer) {
        const Recordset &rs = gRecordsets[iFile];
        const QString column = rs.names().value(iKey);
        const SqlRead read =
            dbsm::rowComparison(gTables[iFile].sTableName, column, rs.value(iKey).toString(), op);
        sSQL = sqlText(read);
        bool faulted = false;
        readRows(iFile, read, &faulted);
        // Here the result is whether the table's row set has rows, also after the reopen.
        return !faulted && gRecordsets[iFile].RecordCount() > 0;
    }
    SqlRead read = sSQL; // a statement of the caller's
    if (sSQL.isEmpty())
        read = dbsm::trimItemId(
            dbsm::comparison(gTables[iFile].sTableName, keyNames(iFile), keyValues(iFile), op));
    if (op.startsWith('<'))
        read.shape += " DESC";
    sSQL = sqlText(read);
    return readRows(iFile, read);
}

// Rows read in one statement for a run of Get Next or Get Previous on one table
// and key inside one action; the run's next calls are served from them. The
// run ends with anything that may have changed the table or the key buffer.
struct ReadAhead {
    quint64 serial = 0; // mpDBSM_ReadSerial() when they were read
    qint16 key = -1;
    bool previous = false;
    QStringList keys;    // the key's columns
    QList<int> columns;  // where they stand in the rows
    QStringList lastKey; // the key of the row served last
    QStringList names;
    QVector<QVector<QVariant>> rows; // in key order, from `next` on not yet served
    int next = 0;
    bool toEnd = false;  // no row lies beyond them
    bool filled = false; // false: the run's first row only
};

// A page of the lookup and a few rows.
constexpr int kReadAheadRows = 24;

// The read-ahead of each table.
std::vector<ReadAhead> &readAheads()
{
    static std::vector<ReadAhead> r;
    return r;
}

ReadAhead &readAheadOf(qint16 iFile)
{
    std::vector<ReadAhead> &r = readAheads();
    if (r.size() < gRecordsets.size())
        r.resize(gRecordsets.size());
    return r[iFile];
}

void dropReadAhead(qint16 iFile)
{
    if (iFile >= 0 && iFile < static_cast<int>(readAheads().size()))
        readAheads()[iFile] = ReadAhead();
}

QString withoutTrailingBlanks(const QString &s)
{
    qsizetype n = s.size();
    while (n > 0 && s[n - 1] == ' ') --n;
    return s.left(n);
}

// Where the key's columns stand among the names; empty when one is missing.
QList<int> keyColumns(const QStringList &names, const QStringList &keys)
{
    QList<int> columns;
    for (const QString &k : keys) {
        const auto i = std::find_if(names.begin(), names.end(), [&k](const QString &n) {
            return !n.compare(k, Qt::CaseInsensitive);
        });
        if (i == names.end())
            return {};
        columns << static_cast<int>(i - names.begin());
    }
    return columns;
}

// A row's key; empty when a segment is NULL.
QStringList keyOf(const QVector<QVariant> &row, const QList<int> &columns)
{
    QStringList values;
    for (int i : columns) {
        if (row.value(i).isNull())
            return {};
        values << row[i].toString();
    }
    return values;
}

// The same key under every engine's collation: the same text but for trailing
// blanks and the case of plain letters.
bool sameKey(const QStringList &a, const QStringList &b)
{
    if (a.size() != b.size() || a.isEmpty())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        const QString x = withoutTrailingBlanks(a[i]), y = withoutTrailingBlanks(b[i]);
        const auto plain = [](const QString &s) {
            return std::all_of(s.begin(), s.end(), [](QChar c) { return c.unicode() < 0x80; });
        };
        if (x != y && !(plain(x) && plain(y) && !x.compare(y, Qt::CaseInsensitive)))
            return false;
    }
    return true;
}

// A different key under every engine's collation: the letters differ with case
// and accents set aside.
bool otherKey(const QStringList &a, const QStringList &b)
{
    const auto letters = [](const QString &s) {
        QString d =
            withoutTrailingBlanks(s).normalized(QString::NormalizationForm_D).toCaseFolded();
        d.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
        return d;
    };
    if (a.size() != b.size() || a.isEmpty())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (letters(a[i]) != letters(b[i]))
            return true;
    }
    return false;
}

// Get Next or Get Previous: `read` is the statement of this one call. The run's
// second call reads a page and a few rows at once, the calls after it are served
// from them while nothing else touched the table.
bool nextRow(qint16 iFile, qint16 iKey, bool previous, const SqlRead &read)
{
    const QString &table = gTables[iFile].sTableName;
    ReadAhead &a = readAheadOf(iFile);
    const quint64 serial = mpDBSM_ReadSerial();
    const QStringList keys = keyNames(iFile);
    const bool run = serial != 0 && !gfbDBSM_ActionFailed() && a.serial == serial &&
                     a.key == iKey && a.previous == previous && a.keys == keys &&
                     keys.size() <= 2 && sameKey(keyValues(iFile), a.lastKey);
    if (run && a.filled && a.next < a.rows.size()) {
        const QVector<QVariant> &row = a.rows[a.next];
        const QStringList key = keyOf(row, a.columns);
        if (otherKey(key, a.lastKey)) {
            gRecordsets[iFile].reset(read, table, a.names, {row});
            a.lastKey = key;
            ++a.next;
            return true;
        }
    } else if (run && a.filled && a.toEnd) {
        a = ReadAhead();
        return notFound(iFile);
    }
    const int count = run ? kReadAheadRows : 1;
    SqlRead statement = read;
    static const QRegularExpression top("^(SELECT\\s+)TOP 1 ");
    if (count > 1)
        statement.shape.replace(top, QString("\\1TOP %1 ").arg(count));
    Recordset rs;
    DbError e;
    if (!openRows(statement, table, rs, e)) {
        a = ReadAhead();
        mpDBSM_Fault(sqlText(read), e);
        return false;
    }
    if (rs.RecordCount() == 0) {
        a = ReadAhead();
        return notFound(iFile);
    }
    const QVector<QVariant> first = rs.rows().first();
    const QList<int> columns = keyColumns(rs.names(), keys);
    a = {serial,     iKey,
         previous,   keys,
         columns,    keyOf(first, columns),
         rs.names(), rs.rows().mid(1),
         0,          rs.RecordCount() < count,
         count > 1};
    gRecordsets[iFile].reset(read, table, rs.names(), {first});
    return true;
}

bool insertRow(qint16 iFile, QString &sSQL)
{
    const QString values = dispatch().InsertValues ? dispatch().InsertValues(iFile) : QString();
    sSQL = "INSERT INTO " + gTables[iFile].sTableName + " VALUES(" + values + ")";
    DbEngine *e = gpDBSM_Engine();
    QSqlQuery q(e->db());
    const QString sql = e->translate(sSQL);
    DbError error = mpDBSM_NotOpen();
    if (e->isOpen() && mpDBSM_Run(q, &sql, error)) {
        gsInsertError.clear();
        return true;
    }
    gsInsertError.clear();
    if (gbInsertLog) {
        QFile f(gfsDBSM_LogFolder() + "/InsertErr.txt");
        if (f.open(QIODevice::WriteOnly | QIODevice::Append))
            f.write(textfile::toCp1252(sSQL) + "\r\n");
        ++glInsertLogCount;
        return true;
    }
    gsInsertError = error.text.startsWith("Cannot insert duplicate") ? QString("Duplicate Key")
                                                                     : error.text.trimmed();
    return false;
}

// Writes or deletes the one row that the last read left, found by its original values.
bool changeCurrentRow(qint16 iFile, bool remove)
{
    Recordset &rs = gRecordsets[iFile];
    DbEngine *e = gpDBSM_Engine();
    if (rs.BOF() || rs.atEOF() || !e || !e->isOpen())
        return false;
    if (!remove && !rs.hasChanges())
        return true;
    const QVector<QVariant> original =
        rs.originalRow().isEmpty() ? rs.currentRow() : rs.originalRow();
    QStringList setColumns;
    QVariantList newValues;
    for (int c : rs.changedColumns()) {
        setColumns << rs.names()[c];
        newValues << rs.currentRow()[c];
    }
    const QString sql = remove ? e->deleteOneRow(rs.table(), rs.names(), original)
                               : e->updateOneRow(rs.table(), setColumns, rs.names(), original);
    QSqlQuery q(e->db());
    q.prepare(sql);
    for (const QVariant &v : newValues) q.addBindValue(v);
    for (const QVariant &v : original) {
        if (!v.isNull())
            q.addBindValue(v);
    }
    DbError error;
    if (!mpDBSM_Run(q, nullptr, error)) {
        mpDBSM_Fault(sql, error);
        return false;
    }
    rs.acceptChanges();
    return true;
}

} // namespace

// ---- operations ----

bool gfbDBSM_Record(qint16 iFile, qint16 iOperation, qint16 iKey, bool bRow, bool, QString &sSQL)
{
    if (!validFile(iFile))
        return false;
    const QString text = QString::fromLatin1(opText(iOperation));
    if (text != "Get Next" && text != "Get Previous")
        dropReadAhead(iFile);
    const bool read = isComparison(text) || text == "Get First" || text == "Get Last" ||
                      text == "Get Next" || text == "Get Previous";
    if ((isComparison(text) || text == "Get First" || text == "Get Last") &&
        (!bRow || gbKeyFromBuffer))
        keyValuesOf(iFile, iKey);

    bool result = true;
    const QString &T = gTables[iFile].sTableName;
    if (isComparison(text)) {
        result = comparisonRead(iFile, iKey, bRow, text, sSQL);
    } else if (text == "Get First") {
        keyValuesOf(iFile, iKey);
        sSQL = dbsm::getFirst(T, keyNames(iFile), iKey == -1);
        result = readRows(iFile, SqlRead(sSQL));
    } else if (text == "Get Last") {
        sSQL = dbsm::getLast(T, keyNames(iFile), iKey == -1, columnNames(iFile).value(0));
        result = readRows(iFile, SqlRead(sSQL));
    } else if (text == "Get Next" || text == "Get Previous") {
        keyValuesOf(iFile, iKey);
        const SqlRead read =
            dbsm::getNext(T, keyNames(iFile), keyValues(iFile), text == "Get Previous");
        sSQL = sqlText(read);
        result = nextRow(iFile, iKey, text == "Get Previous", read);
    } else if (text == "Insert") {
        result = insertRow(iFile, sSQL);
    } else if (text == "Update") {
        if (!bRow && dispatch().RecordToRow)
            dispatch().RecordToRow(iFile);
        result = changeCurrentRow(iFile, false);
    } else if (text == "Delete") {
        result = changeCurrentRow(iFile, true);
    } else if (text == "BySQL") {
        result = readRows(iFile, SqlRead(sSQL)) && gRecordsets[iFile].RecordCount() > 0;
    } else if (text == "21") {
        gTables[iFile].iReserved2 = 0;
    }
    if (result && read && !bRow && dispatch().RowToRecord)
        dispatch().RowToRecord(iFile);
    return result;
}

bool gfbDBSM_OpenTable(qint16 iFile, bool bOwner)
{
    if (!validFile(iFile))
        return false;
    bool result = true;
    DbEngine *engine = gpDBSM_Engine();
    if (!engine || !engine->isOpen())
        gpDBSM_OpenConnection("");
    engine = gpDBSM_Engine();
    if (!engine || !engine->isOpen()) {
        platform::MsgBox("Failed to connect to database. ", platform::vbCritical,
                         "Database Connection Error");
        gTables[iFile].bOpen = false;
        return false;
    }
    const TableDescriptor &t = gTables[iFile];
    if (t.sTableName.trimmed().isEmpty()) {
        gTables[iFile].bOpen = result;
        return result;
    }
    const QString statement = "SELECT TOP 1 * FROM " + QString(bOwner ? "zel." : "") + t.sTableName;
    for (int pass = 0; pass < 8 && engine->isOpen(); ++pass) {
        DbError e;
        if (openRows(SqlRead(statement), t.sTableName, gRecordsets[iFile], e))
            break;
        if (e.number == kErrProvider) { // the database failed, not the table
            mpDBSM_Fault(statement, e);
            result = false;
            break;
        }
        if (gfbDBSM_CreateTable(iFile))
            continue;
        const DbError pending = mpDBSM_LastCreateError();
        if (e.number != kErrTableNotFound && pending.text.startsWith("Invalid object name"))
            continue;
        if (e.number != kErrTableNotFound)
            platform::MsgBox(QString::number(pending.number) + "    Open Table Error    " +
                             pending.text + '\r');
        result = false;
        break;
    }
    gTables[iFile].bOpen = result;
    return result;
}

QVariant gfvDBSM_Field(qint16 iFile, const QVariant &vField)
{
    if (!validFile(iFile))
        return QVariant();
    const Recordset &rs = gRecordsets[iFile];
    const int i = rs.fieldIndex(vField);
    if (i < 0) {
        mpDBSM_Fault(rs.Source(), {kErrNoValue,
                                   "Item cannot be found in the collection corresponding to "
                                   "the requested name or ordinal: " +
                                       vField.toString(),
                                   "ADODB.Fields"});
        return QVariant();
    }
    return rs.value(i);
}

QString gfsDBSM_FieldName(qint16 iFile, const QVariant &vField)
{
    if (!validFile(iFile))
        return QString();
    const Recordset &rs = gRecordsets[iFile];
    const int i = rs.fieldIndex(vField);
    return i < 0 ? QString() : rs.names()[i];
}

void gpDBSM_SetField(qint16 iFile, const QVariant &vField, const QVariant &vValue)
{
    if (!validFile(iFile))
        return;
    Recordset &rs = gRecordsets[iFile];
    const int i = rs.fieldIndex(vField);
    const int type = vValue.typeId();
    if (type == QMetaType::QDate || type == QMetaType::QDateTime) {
        rs.setValue(i, vValue);
        return;
    }
    if (rs.RecordCount() == 0)
        return;
    if (vValue.toString().trimmed().isEmpty()) {
        if (rs.value(i).toString() != QString() || rs.value(i).isNull())
            rs.setValue(i, QString(""));
        return;
    }
    if (rs.value(i) != vValue && rs.value(i).toString() != vValue.toString())
        rs.setValue(i, vValue);
}

void gpDBSM_SetKey(qint16 iFile, qint16 iSegments,
                   const QList<std::pair<qint16, QVariant>> &segments)
{
    if (validFile(iFile))
        gTables[iFile].iKeySegments = iSegments;
    for (int i = 1; i <= 9; ++i) {
        const bool used = i <= segments.size();
        giKeyField[i] = used ? segments[i - 1].first : 0;
        gvKeyValue[i] = used ? segments[i - 1].second : QVariant();
    }
}

QString gfsDBSM_SqlText(const QVariant &vValue, bool bDouble)
{
    return sqlValueText(vValue.toString(), bDouble);
}

qint32 glDBSM_Count(qint16 iFile, QString &sTable)
{
    if (sTable.isEmpty() && validFile(iFile))
        sTable = gTables[iFile].sTableName;
    Recordset rs;
    DbError e;
    const QString statement = "SELECT COUNT(*) FROM " + sTable;
    if (!openRows(SqlRead(statement), sTable, rs, e)) {
        mpDBSM_Fault(statement, e);
        return 0;
    }
    return rs.value(0).toInt();
}

bool gfbDBSM_HasRows(qint16 iFile)
{
    if (!validFile(iFile))
        return false;
    Recordset rs;
    DbError e;
    const QString statement = "SELECT TOP 1 1 FROM " + gTables[iFile].sTableName;
    if (!openRows(SqlRead(statement), gTables[iFile].sTableName, rs, e)) {
        mpDBSM_Fault(statement, e);
        return false;
    }
    return rs.RecordCount() > 0;
}

bool gfbDBSM_Select(QString &sSQL, qint16 iFile, bool bNoBind, int maxRows)
{
    return gfbDBSM_Select(SqlRead(sSQL), iFile, bNoBind, maxRows);
}

bool gfbDBSM_Select(const SqlRead &read, qint16 iFile, bool bNoBind, int maxRows)
{
    if (!validFile(iFile))
        return false;
    dropReadAhead(iFile);
    Recordset rs;
    DbError e;
    if (!openRows(read, gTables[iFile].sTableName, rs, e, maxRows)) {
        if (e.number != kErrNoValue && e.number != kErrCommand) // as glDBSM_Execute ignores them
            mpDBSM_Fault(sqlText(read), e);
        return false;
    }
    if (bNoBind)
        return false;
    if (rs.RecordCount() == 0)
        return notFound(iFile);
    gRecordsets[iFile] = rs;
    gRecordsets[iFile].MoveFirst();
    return true;
}

bool gfbDBSM_Rows(qint16 iFile, const SqlRead &read, QStringList &names,
                  QVector<QVector<QVariant>> &rows)
{
    if (!validFile(iFile))
        return false;
    Recordset rs;
    DbError e;
    if (!openRows(read, gTables[iFile].sTableName, rs, e)) {
        mpDBSM_Fault(sqlText(read), e);
        return false;
    }
    names = rs.names();
    rows = rs.rows();
    return true;
}

QString gfsDBSM_RowOrderColumn()
{
    const DbEngine *e = gpDBSM_Engine();
    return e ? e->rowLocator().column : QString();
}
