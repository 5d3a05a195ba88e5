#pragma once

// Connects, registers the three tables and reads the store from COMMON; false
// means the application must end.
bool gfbDBSM_Setup();
