#pragma once
#include <QString>

// The Yes/No question: text, two carriage returns, question; true on Yes.
bool gfbAsk(const QString &sText, const QString &sQuestion, int iStyle);

// Asks before a screen drops what the user changed; true to drop it. No is the default.
bool gfbChanges_discard();
