#include "common/ui/sm_Combos.h"
#include "common/Conversions.h"
#include <QComboBox>

void gpCombo_select(QComboBox *oCombo, const QString &sText, bool bFirst)
{
    if (oCombo->count() == 0)
        return;
    const QString wanted = conv::Trim(sText.toUpper());
    for (int i = 0; i < oCombo->count(); ++i) {
        if (conv::Trim(oCombo->itemText(i).toUpper()) == wanted) {
            oCombo->setCurrentIndex(i);
            break;
        }
    }
    if (bFirst && oCombo->currentIndex() == -1)
        oCombo->setCurrentIndex(0);
}
