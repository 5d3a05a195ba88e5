#pragma once
#include <QString>

class QLineEdit;
class QWidget;

// The font of the suite's screens; blank counts as "Arial".
extern QString gsFontName;

// `iCompare` 0 ignores case.
void gpTextBox_caret(QLineEdit *oBox, const QString &sSeek, int iCompare);
// Every screen's font and button look.
void gpForm_initControls(QWidget *oForm);
