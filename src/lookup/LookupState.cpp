#include "lookup/LookupState.h"

bool gbLookupFind = false;
QString gsLookupCode;
qint16 giLookupKind = 1;
qint16 giSelectColumn = 0;
QString gsVendorFilter;
qint16 giVendorScope = 1;
bool gbWildcard = false;
bool gbStopSearch = false;
bool gbTableBusy = false;
bool gbKeyEdit = false;
bool gbLookupClosing = false;
bool gbLoadAbort = false;
qint16 giGridRows = 14;
QVector<qint32> gColumnEdges;
