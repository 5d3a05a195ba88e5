#pragma once

// Waits, with the user's consent, for an unreachable data folder to come back.
bool gfbSafe_CheckDataPath();
