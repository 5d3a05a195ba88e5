#pragma once

// The entry: runs the start order and ends the process.
void Main();
// Gives gIni the suite's ZEL.INI and reads the two search settings; true when the file opened.
bool gfbSearchFields_read();
// The preview's mail command opens the mail screen; print knows nothing of mail.
void gpPreviewMail_register();
// Ends the process at once.
void gpApplication_end();
