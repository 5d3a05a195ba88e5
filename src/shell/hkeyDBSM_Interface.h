#pragma once
#include "database/zelDBSM_StoreTables.h"

// Hands the engine the data folder and the application's tables.
void gpDBSM_RegisterTables();
