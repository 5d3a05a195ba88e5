#include "common/zelTermDefinitions.h"
#include "common/Conversions.h"
#include "platform/Dialogs.h"

QVector<TermDefinition> gTermDefinitions = [] {
    QVector<TermDefinition> t(100);
    t[termBusiness].Default = "Business";
    t[termFirstName].Default = "First Name";
    t[termLastName].Default = "Last Name";
    return t;
}();

namespace {

int termIndex(const QVariant &vTerm)
{
    const double number = conv::Val(vTerm.toString());
    if (number != 0)
        return static_cast<int>(number);
    const QString wanted = conv::Trim(vTerm.toString().toUpper());
    for (int i = 1; i < gTermDefinitions.size(); ++i) {
        if (conv::Trim(gTermDefinitions[i].Default.toUpper()) == wanted)
            return i;
    }
    return 0;
}

} // namespace

QString gfsTerm(const QVariant &vTerm, int iCase)
{
    const int index = termIndex(vTerm);
    QString text;
    if (index > 0 && index < gTermDefinitions.size()) {
        const TermDefinition &term = gTermDefinitions[index];
        text = conv::Trim(term.Defined).isEmpty() ? term.Default : term.Defined;
    }
    if (iCase == 1)
        text = text.toUpper();
    else if (iCase == 2)
        text = text.toLower();
    if (text.isEmpty()) {
        text = "ERROR";
        platform::MsgBox("ZEL Term 'Defined\\Default' Not Found\rCall ZEL Support");
    }
    return conv::Trim(text);
}
