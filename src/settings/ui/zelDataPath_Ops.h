#pragma once
#include <QtGlobal>

// Settles the data folder at start; false means the application must end.
bool gfbZEL_DataPath_open(qint16 iMaxStations);
