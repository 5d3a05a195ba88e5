#pragma once
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Inventory.h"
#include "database/zelDBSM_Upc.h"
#include "lookup/model/InventoryLookup.h"

// A move or a search that the database fails is undone: the list stays as it was,
// never at a false end, and the next move reads again.
class InventoryLookup::ListGuard {
public:
    explicit ListGuard(InventoryLookup &lookup);
    ListGuard(const ListGuard &) = delete;
    ListGuard &operator=(const ListGuard &) = delete;
    ~ListGuard();

private:
    DbAction m_action; // its box comes after the list is back
    InventoryLookup &m_lookup;
    QVector<QStringList> m_cells;
    bool m_atTop, m_atEnd;
    QString m_cursorEnd;
    qint16 m_savedRow, m_matchIndex;
    int m_row, m_firstMatch;
    QVector<TableRecord> m_matches;
    TableRecord m_inventory, m_upc;
};

namespace lookup_detail {

// One keyed read of a table; what it read is in the table's row set.
inline bool read(qint16 file, qint16 op, qint16 key)
{
    QString sql;
    return gfbDBSM_Record(file, op, key, false, false, sql);
}

} // namespace lookup_detail
