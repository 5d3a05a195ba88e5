#include "common/ui/sm_Forms.h"
#include "common/Conversions.h"
#include <QLineEdit>
#include <QWidget>
#include <cmath>

QString gsFontName;

void gpTextBox_caret(QLineEdit *oBox, const QString &sSeek, int iCompare)
{
    const QString text = oBox->text();
    int position = 0;
    if (conv::AboveBlank(sSeek)) {
        const Qt::CaseSensitivity cs = iCompare == 0 ? Qt::CaseInsensitive : Qt::CaseSensitive;
        position = conv::Trim(text).indexOf(sSeek, 0, cs) + 1;
    }
    if (position == 0)
        position = text.size();
    if (position > 0)
        oBox->setCursorPosition(position);
}

void gpForm_initControls(QWidget *oForm)
{
    if (conv::Trim(gsFontName).isEmpty())
        gsFontName = "Arial";
    for (QWidget *control : oForm->findChildren<QWidget *>()) {
        QFont font = control->font();
        if (font.family() != "Arial") {
            const double delta = font.family() == "MS Sans Serif" ? 0.75 : -0.75;
            if (font.pointSizeF() > 1) // a font sized in pixels keeps its size
                font.setPointSizeF(std::round(font.pointSizeF() + delta));
            font.setFamily(gsFontName);
            control->setFont(font);
        }
        // Controls without these properties simply carry them along unused.
        if (control->objectName().left(3).toUpper() == "CMD") {
            control->setProperty("Appearance", 3);
            control->setProperty("PictureStretch", false);
            control->setProperty("AppearanceThemes", 3);
            control->setProperty("PictureDisabledEffect", "Gray Picture");
        }
    }
}
