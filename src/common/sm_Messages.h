#pragma once
#include <QString>

// The Yes/No question: text, two carriage returns, question; true on Yes.
bool gfbAsk(const QString &sText, const QString &sQuestion, int iStyle);
