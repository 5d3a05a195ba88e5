#pragma once
#include <QString>

class QComboBox;

// Selects the first entry equal to `sText`, ignoring case and outer blanks; with
// `bFirst` the first entry when none matches.
void gpCombo_select(QComboBox *oCombo, const QString &sText, bool bFirst);
