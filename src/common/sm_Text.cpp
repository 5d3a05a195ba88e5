#include "common/sm_Text.h"
#include "common/Conversions.h"
#include <QLineEdit>
#include <QWidget>
#include <cmath>

QString gsFontName;

QString gfsTagValue(const QString &sLine, const QString &sTag, const QString &sEnd)
{
    const int at = sLine.indexOf(sTag, 0, Qt::CaseSensitive);
    if (at < 0)
        return QString();
    const int start = at + sTag.size();
    // Only a one-character end can equal a character of the line.
    int stop = sEnd.size() == 1 ? sLine.indexOf(sEnd[0], start) : -1;
    if (stop < 0)
        stop = sLine.size();
    if (stop <= start)
        return QString();
    return conv::RTrim(sLine.mid(start, stop - start));
}

QString gfsText_keep(const QString &sText, const QString &sAllowed)
{
    QString kept;
    for (QChar c : sText) {
        if (sAllowed.contains(c, Qt::CaseSensitive))
            kept += c;
    }
    return kept;
}

QString gfsText_digits(const QString &sText)
{
    return gfsText_keep(sText, "0123456789");
}

QString gfsText_pad(int iMode, int iWidth, const QString &sText, const QString &sPad)
{
    if (sText.size() >= iWidth)
        return sText;
    const QChar pad = sPad.isEmpty() ? QChar(' ') : sPad[0];
    const int missing = iWidth - sText.size();
    switch (iMode) {
    case 1:
        return (QString(iWidth, pad) + sText).right(iWidth);
    case 2:
        return (sText + QString(iWidth, pad)).left(iWidth);
    case 3: {
        const QString half((missing + 1) / 2, pad);
        return (half + sText + half).left(iWidth);
    }
    default:
        return sText;
    }
}

double gfdNumber_round(double dValue, int iDecimals)
{
    const double scale = std::pow(10.0, iDecimals);
    double v = std::fabs(dValue) * scale;
    const float f = static_cast<float>(v - std::floor(v));
    v = f >= 0.5f ? std::floor(v) + 1 : std::floor(v);
    v /= scale;
    return dValue < 0 ? -v : v;
}

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
