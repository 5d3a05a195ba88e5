#pragma once
#include "database/TableRecord.h"
#include <QString>
#include <QStringList>
#include <QVector>

class LookupForm;
namespace platform {
class MSFlexGrid;
}

// The page of the lookup list and where the record buffer stands against it.
extern QVector<QStringList> gsPageCells; // rows 0 to giPageRows + 1
extern qint16 giPageRows;
extern QString gsCursorEnd; // "Top", "Bottom" or empty
extern bool gbAtTop;
extern bool gbAtEnd;
extern qint16 giLastDirection;
extern qint16 giSavedRow;
extern qint16 giEmptyRows;
extern QString gsSearchValue;
extern bool gbItemIdSearch;
extern QVector<TableRecord> gInventoryMatches; // from 1
extern qint16 giMatchIndex;

// Directions of a move.
enum GridDirection { dirLineUp = 0, dirPageUp = 1, dirPageDown = 2, dirLineDown = 3 };

void gpGrid_setup(platform::MSFlexGrid *grid);
bool gfbGrid_load(platform::MSFlexGrid *grid);
bool gfbGrid_reload(platform::MSFlexGrid *grid, LookupForm *form);
void gpGrid_scroll(platform::MSFlexGrid *grid, int iDirection, LookupForm *form);
void gpGrid_fetch(int iDirection, platform::MSFlexGrid *grid, LookupForm *form);
bool gfbGrid_position(int iRow, int iDirection, int iCount);
bool gfbGrid_search(platform::MSFlexGrid *grid, LookupForm *form);
void gpGrid_wildcard(platform::MSFlexGrid *grid, LookupForm *form);
void gpGrid_setCursor(int iRow, platform::MSFlexGrid *grid);
void gpGrid_fillRow(int iRow, platform::MSFlexGrid *grid);
void gpGrid_clearRow(int iRow, platform::MSFlexGrid *grid);
int gfiSortColumn();
bool gfbField_matches();
