#include "screens/sm_Buttons.h"
#include "screens/posButtons.h"

namespace {

void setKeyCaption(MyButton *oButton, const QString &sCaption, int iKeyCode, bool bFlag,
                   const QString &keyName)
{
    const QString separator = sCaption.isEmpty() ? QString() : QString(bFlag ? " " : "\r");
    oButton->setCaption(sCaption + separator + keyName);
    oButton->Tag = QString::number(iKeyCode);
}

} // namespace

void SetCharKeyCaption(MyButton *oButton, const QString &sCaption, int iKeyCode, bool bFlag)
{
    QString name;
    if (iKeyCode >= 33 && iKeyCode <= 126)
        name = QChar(iKeyCode);
    else if (iKeyCode == 27)
        name = "Esc";
    setKeyCaption(oButton, sCaption, iKeyCode, bFlag, name);
}

void SetFunctionKeyCaption(MyButton *oButton, const QString &sCaption, int iKeyCode, bool bFlag)
{
    QString name;
    if (iKeyCode >= 112 && iKeyCode <= 123)
        name = "F" + QString::number(iKeyCode - 111);
    else if (iKeyCode == 33)
        name = "Page Up";
    else if (iKeyCode == 34)
        name = "Page Down";
    else if (iKeyCode == 35)
        name = "End";
    else if (iKeyCode == 36)
        name = "Home";
    else if (iKeyCode == 46)
        name = "Delete";
    setKeyCaption(oButton, sCaption, iKeyCode, bFlag, name);
}
