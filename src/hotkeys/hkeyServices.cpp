#include "hotkeys/hkeyServices.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Files.h"
#include "common/sm_Text.h"
#include "platform/Dialogs.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QFile>
#include <optional>

std::array<HotKeyGroup, 5> gHotKeyGroups;

namespace {

struct NamedColor {
    const char *name;
    qint32 value;
};

const NamedColor kColors[] = {
    {"RED", 0x0000FF},       {"DARK_RED", 0x0000C0},    {"BLUE", 0xFF0000},
    {"DARK_BLUE", 0x800000}, {"GREEN", 0x00FF00},       {"DARK_GREEN", 0x008000},
    {"YELLOW", 0x00FFFF},    {"DARK_YELLOW", 0x00C0C0}, {"CYAN", 0xFFFF00},
    {"DARK_CYAN", 0xC0C000}, {"MAGENTA", 0xFF00FF},     {"DARK_MAGENTA", 0xC000C0},
};

const char *const kDefaultColorName = "*Default";

void showMissing(const QString &path)
{
    platform::MsgBox(QDir::toNativeSeparators(path) +
                         "\r\rHot Keys File Is Missing\rMake sure the Hot Keys file is in the "
                         "data path.",
                     platform::vbCritical);
}

void showWriteFailure(const QString &path, const QString &reason)
{
    platform::MsgBox(QDir::toNativeSeparators(path) + "\r\rHot Keys File Could Not Be Saved\r" +
                         reason +
                         "\rYour changes are still on the screen. Make sure the data folder "
                         "can be written to and try again.",
                     platform::vbCritical);
}

// A group or key number of a line, when it fits the record; lines with other
// numbers are skipped, since the record has no room for them.
std::optional<int> indexOf(const QString &line, const QString &tag, int last)
{
    const std::optional<qint16> n = conv::CInt(conv::Val(gfsTagValue(line, tag, "[")));
    if (!n || *n < 0 || *n > last)
        return std::nullopt;
    return *n;
}

void readGroupLine(const QString &line, int group)
{
    HotKeyGroup &g = gHotKeyGroups[group];
    g.Caption = gfsTagValue(line, "[CAPTION]", "[");
    g.Color = glHotKeyColor_value(gfsTagValue(line, "[COLOR]", "["));
}

void readKeyLine(const QString &line, HotKeyButton &b)
{
    auto field = [&line](const char *tag) { return conv::Trim(gfsTagValue(line, tag, "[")); };
    b.Caption = field("[CAPTION]");
    b.Item = field("[ITEM]");
    b.Icon = field("[ICON]");
    b.LinkSet = field("[LINKSET]");
    b.IdSelect = field("[IDSELECT]");
    b.Root = field("[ROOT]");
}

QStringList setLines(const QString &sTitle)
{
    QStringList lines{"[SET]" + sTitle};
    for (int g = 1; g <= 4; ++g) {
        const HotKeyGroup &group = gHotKeyGroups[g];
        lines << QString("[GROUP]%1[CAPTION]%2[COLOR]%3")
                     .arg(g)
                     .arg(group.Caption, gfsHotKeyColor_name(group.Color));
        for (int k = 1; k <= 8; ++k) {
            const HotKeyButton &b = group.Buttons[k];
            lines << "[BUTTON]" + QString::number(k) + "[CAPTION]" + b.Caption + "[ITEM]" + b.Item +
                         "[ICON]" + b.Icon + "[IDSELECT]" + b.IdSelect + "[LINKSET]" + b.LinkSet +
                         "[ROOT]" + b.Root;
        }
    }
    return lines;
}

} // namespace

QString hotKeySetPath(const QString &sFileNumber)
{
    return gDataPath.DataPath() + "/HKSET" + sFileNumber + ".SDF";
}

void gpHotKeySet_clear()
{
    for (HotKeyGroup &g : gHotKeyGroups) {
        g.Caption.clear();
        g.Color = kButtonFaceColor;
        g.Buttons.fill(HotKeyButton());
    }
}

QString gfsHotKeySet_read(const QString &sSetNumber)
{
    const QString path = hotKeySetPath(gfsText_pad(1, 2, sSetNumber, "0"));
    QStringList lines;
    // A file that vanishes between the test and the open is just as missing.
    if (!gfbFile_exists(path) || !textfile::readLines(path, lines)) {
        showMissing(path);
        return QString();
    }
    if (lines.isEmpty())
        return QString();
    const QString title = gfsTagValue(lines.first(), "[SET]", "[");
    std::optional<int> group = 0;
    for (int i = 1; i < lines.size(); ++i) {
        const QString &line = lines[i];
        if (line.contains("[GROUP]")) {
            group = indexOf(line, "[GROUP]", 4);
            if (group)
                readGroupLine(line, *group);
        } else if (line.contains("[BUTTON]") && group) {
            if (const std::optional<int> key = indexOf(line, "[BUTTON]", 8))
                readKeyLine(line, gHotKeyGroups[*group].Buttons[*key]);
        }
    }
    return title;
}

bool gpHotKeySet_write(const QString &sSetNumber, const QString &sTitle)
{
    const QString path = hotKeySetPath(sSetNumber);
    QFile old(path);
    if (old.exists() && !old.remove()) {
        showWriteFailure(path, old.errorString());
        return false;
    }
    QString error;
    if (!textfile::writeLines(path, setLines(sTitle), &error)) {
        showWriteFailure(path, error);
        return false;
    }
    return true;
}

qint32 glHotKeyColor_value(const QString &sName)
{
    for (const NamedColor &c : kColors) {
        if (sName == QLatin1String(c.name))
            return c.value;
    }
    return kSilverColor;
}

QString gfsHotKeyColor_name(qint32 lColor)
{
    for (const NamedColor &c : kColors) {
        if (lColor == c.value)
            return QString::fromLatin1(c.name);
    }
    return lColor == kButtonFaceColor ? QString::fromLatin1(kDefaultColorName) : QString();
}
