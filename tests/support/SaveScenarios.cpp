#include "support/SaveScenarios.h"
#include "hotkeys/hkeyServices.h"
#include <QFile>

namespace testing_support {

QString fillSetVersion(int version)
{
    gpHotKeySet_clear();
    const QString word = version ? "Newer" : "Old";
    for (int g = 1; g <= 4; ++g) {
        gHotKeyGroups[g].Caption = word + " column " + QString::number(g);
        for (int k = 1; k <= 8; ++k) {
            HotKeyButton &b = gHotKeyGroups[g].Buttons[k];
            b.Caption = word + ' ' + QString::number(k);
            b.Item = QString("%1%2.%3").arg(version).arg(g * 10 + k, 6, 10, QChar('0')).arg(k);
            b.IdSelect = "No";
        }
    }
    return word + " title";
}

void writeOldFiles(const QString &folder)
{
    const std::pair<const char *, QByteArray> files[] = {
        {"HKSET07.SDF",
         "[SET]Seven\r\n[GROUP]1[CAPTION]Col[COLOR]BLUE\r\n"
         "[BUTTON]1[CAPTION]Tea[ITEM]0000101.0[ICON][IDSELECT]No[LINKSET][ROOT]\r\n"},
        {"HKSET08.SDF",
         "[SET]Eight\r\n[GROUP]1[CAPTION]Col[COLOR]RED\r\n"
         "[BUTTON]1[CAPTION]To 7[ITEM][ICON][IDSELECT]No[LINKSET]7[ROOT]\r\n"
         "[BUTTON]2[CAPTION]Milk[ITEM]0000102.0[ICON][IDSELECT]No[LINKSET][ROOT]\r\n"},
        {"SPECIAL.BDF", "[BUTTON]1[CAPTION]Void Line[KEY]*\r\n"},
        {"COUPON.BDF", "[BUTTON]1[CAPTION]Dollar Off[KEY]~SCOUPN[VALUE]1.00\r\n"},
    };
    for (const auto &[name, bytes] : files) {
        QFile f(folder + '/' + name);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            f.write(bytes);
    }
}

bool saveOnce(const QString &what, ScriptedDialogs &dialogs, QStringList *said)
{
    bool saved = false;
    if (what == "set") {
        saved = gpHotKeySet_write("07", fillSetVersion(1));
    } else if (what == "special") {
        saved = gpSpecialKeys_write("Void Line\r*", "Divide by\r/", "Weigh\rW");
    } else if (what == "coupon") {
        saved =
            gpCouponKeys_write({0, "Dollar Off", "~SCOUPN|1.00"}, {1, "Fifty Cents", "~SCOUPN|.50"},
                               {2, "Quarter", "~SCOUPN|.25"});
    } else if (what == "remove") {
        const SetRemoval removal = gpHotKeySet_remove("07");
        saved = removal.removed;
        *said << removal.problems;
    }
    for (const Box &box : dialogs.take()) *said << box.text;
    return saved;
}

} // namespace testing_support
