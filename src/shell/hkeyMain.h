#pragma once

// The entry: runs the start order and ends the process.
void Main();
// Ends the process at once.
void gpApplication_end();
