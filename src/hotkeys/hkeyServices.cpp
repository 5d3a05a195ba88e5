#include "hotkeys/hkeyServices.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Files.h"
#include "common/sm_Text.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/Dialogs.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <optional>

HotKeySet gHotKeyGroups;

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

void showWriteFailure(const QString &path, const QString &reason, const QString &kind = "Hot Keys")
{
    platform::MsgBox(QDir::toNativeSeparators(path) + "\r\r" + kind + " File Could Not Be Saved\r" +
                         reason +
                         "\rThe file in the data folder was left as it was, and your changes "
                         "are still on the screen.",
                     platform::vbCritical);
}

// The tags of a set file. Values hold no "[", so every tag starts at a "[" and
// one scan of a line finds the first occurrence of each, as gfsTagValue would.
enum Tag { tGroup, tButton, tCaption, tColor, tItem, tIcon, tIdSelect, tLinkSet, tRoot, tCount };
const QLatin1StringView kTagNames[tCount] = {
    QLatin1StringView("GROUP]"),    QLatin1StringView("BUTTON]"),  QLatin1StringView("CAPTION]"),
    QLatin1StringView("COLOR]"),    QLatin1StringView("ITEM]"),    QLatin1StringView("ICON]"),
    QLatin1StringView("IDSELECT]"), QLatin1StringView("LINKSET]"), QLatin1StringView("ROOT]")};

struct TagScan {
    std::array<std::optional<QStringView>, tCount> values;

    explicit TagScan(QStringView line)
    {
        for (qsizetype at = line.indexOf('['); at >= 0;) {
            const qsizetype next = line.indexOf('[', at + 1);
            const QStringView rest = line.mid(at + 1);
            for (int t = 0; t < tCount && !rest.isEmpty(); ++t) {
                if (!values[t] && rest.front() == QLatin1Char(kTagNames[t].front()) &&
                    rest.startsWith(kTagNames[t])) {
                    const qsizetype start = at + 1 + kTagNames[t].size();
                    values[t] = line.mid(start, (next < 0 ? line.size() : next) - start);
                    break;
                }
            }
            at = next;
        }
    }
    bool has(Tag t) const { return values[t].has_value(); }
    // The value with trailing blanks removed, as gfsTagValue gives it.
    QString value(Tag t) const
    {
        QStringView v = values[t].value_or(QStringView());
        while (!v.isEmpty() && v.back() == ' ') v.chop(1);
        return v.toString();
    }
    QString trimmed(Tag t) const { return conv::LTrim(value(t)); }
};

// A group or key number of a line, when it fits the record; lines with other
// numbers are skipped, since the record has no room for them.
std::optional<int> numberOf(const TagScan &scan, Tag tag, int last)
{
    const std::optional<qint16> n = conv::CInt(conv::Val(scan.value(tag)));
    if (!n || *n < 0 || *n > last)
        return std::nullopt;
    return *n;
}

void readGroupLine(const TagScan &scan, HotKeyGroup &g)
{
    g.Caption = scan.value(tCaption);
    g.Color = glHotKeyColor_value(scan.value(tColor));
}

void readKeyLine(const TagScan &scan, HotKeyButton &b)
{
    b.Caption = scan.trimmed(tCaption);
    b.Item = scan.trimmed(tItem);
    b.Icon = scan.trimmed(tIcon);
    b.LinkSet = scan.trimmed(tLinkSet);
    b.IdSelect = scan.trimmed(tIdSelect);
    b.Root = scan.trimmed(tRoot);
}

} // namespace

QString hotKeySetPath(const QString &sFileNumber)
{
    return gDataPath.DataPath() + "/HKSET" + sFileNumber + ".SDF";
}

void gpHotKeySet_clear()
{
    hotKeySetClear(gHotKeyGroups);
}

void hotKeySetClear(HotKeySet &groups)
{
    for (HotKeyGroup &g : groups) {
        g.Caption.clear();
        g.Color = kButtonFaceColor;
        g.Buttons.fill(HotKeyButton());
    }
}

QString gfsHotKeySet_read(const QString &sSetNumber)
{
    const QString path = hotKeySetPath(gfsText_pad(1, 2, sSetNumber, "0"));
    QString text;
    // A file that cannot be opened is missing, also when it vanished after the listing.
    if (!textfile::readText(path, text)) {
        showMissing(path);
        return QString();
    }
    return hotKeySetParse(text, gHotKeyGroups);
}

QString hotKeySetParse(const QString &text, HotKeySet &groups, QStringList *skipped)
{
    const QList<QStringView> lines = textfile::splitLineViews(text);
    if (lines.isEmpty())
        return QString();
    const QString title = gfsTagValue(lines.first().toString(), "[SET]", "[");
    std::optional<int> group = 0; // lines before the first column line land in group 0
    bool seenGroup = false;
    auto skip = [skipped](int i, const QString &why) {
        if (skipped)
            *skipped << QString("line %1 %2").arg(i + 1).arg(why);
    };
    for (int i = 1; i < lines.size(); ++i) {
        const TagScan scan(lines[i]);
        if (scan.has(tGroup)) {
            seenGroup = true;
            group = numberOf(scan, tGroup, 4);
            if (group)
                readGroupLine(scan, groups[*group]);
            if (!group || *group == 0)
                skip(i, "names column \"" + scan.value(tGroup) +
                            "\", which is not 1 to 4: it and its keys were skipped");
        } else if (scan.has(tButton)) {
            if (!group)
                continue; // told with its column line
            const std::optional<int> key = numberOf(scan, tButton, 8);
            if (key)
                readKeyLine(scan, groups[*group].Buttons[*key]);
            if (!seenGroup)
                skip(i, "is a key before the first column line: no column shows it");
            else if (*group != 0 && (!key || *key == 0))
                skip(i, "names key \"" + scan.value(tButton) +
                            "\", which is not 1 to 8: it was skipped");
        } else if (!conv::Trim(lines[i].toString()).isEmpty()) {
            skip(i, "is neither a column nor a key line: it was skipped");
        }
    }
    return title;
}

QStringList hotKeySetLines(const HotKeySet &groups, const QString &sTitle)
{
    QStringList lines{"[SET]" + sTitle};
    for (int g = 1; g <= 4; ++g) {
        const HotKeyGroup &group = groups[g];
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

QByteArray hotKeySetBytes(const QString &sTitle)
{
    return textfile::linesBytes(hotKeySetLines(gHotKeyGroups, sTitle));
}

bool gpHotKeySet_write(const QString &sSetNumber, const QString &sTitle)
{
    return hotKeySetWrite(sSetNumber, gHotKeyGroups, sTitle);
}

bool hotKeySetWrite(const QString &sSetNumber, const HotKeySet &groups, const QString &sTitle)
{
    const QString path = hotKeySetPath(sSetNumber);
    if (!gfbVersion_keep(path))
        return false;
    QString error;
    if (!platform::replaceFile(path, textfile::linesBytes(hotKeySetLines(groups, sTitle)),
                               &error)) {
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

QStringList hotKeySetFiles()
{
    QDir folder(gDataPath.DataPath());
    // The sales stations write the names in capitals; elsewhere than on Windows case counts.
    QDir::Filters filters = QDir::Files | QDir::Hidden | QDir::System;
#ifndef Q_OS_WIN
    filters |= QDir::CaseSensitive;
#endif
    return folder.entryList({"HKSET*.SDF"}, filters, QDir::Name);
}

QString hotKeySetDigits(const QString &sFileName)
{
    return gfsText_digits(sFileName);
}

QString hotKeySetShownDigits(const QString &sFileName)
{
    return gfsText_digits(sFileName.right(7));
}

QString hotKeySetNumber(const QString &sFileName)
{
    static const QRegularExpression own("^HKSET([0-9]+)\\.SDF$",
                                        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = own.match(sFileName);
    return m.hasMatch() && conv::Val(m.captured(1)) >= 1 ? m.captured(1) : QString();
}

QString gfsHotKeySet_label(const QString &sSetNumber)
{
    if (conv::Trim(sSetNumber).isEmpty())
        return QString();
    const QString number = gfsText_pad(1, 2, sSetNumber, "0");
    QStringList lines;
    // A link to a set whose file has gone still shows its number.
    if (!textfile::readLines(hotKeySetPath(number), lines))
        return number + " (missing)";
    return number + ' ' + (lines.isEmpty() ? QString() : gfsTagValue(lines.first(), "[SET]", "["));
}

bool hotKeyLineLinksTo(const QString &line, double set)
{
    const QString link = gfsTagValue(line, "[LINKSET]", "[");
    // An empty link reads as 0; such a key links nowhere and is never touched.
    return !conv::Trim(link).isEmpty() && conv::Val(link) == set;
}

namespace {

// Lets the screen paint and take a key now and then while a removal rewrites many
// files, but not at every file: that would cost more than the files.
class ScreenYield {
public:
    ScreenYield() { m_since.start(); }
    void operator()()
    {
        if (m_since.elapsed() < 50)
            return;
        QCoreApplication::processEvents();
        m_since.restart();
    }

private:
    QElapsedTimer m_since;
};

// Drops every line that links to `removed`; true when anything was dropped.
bool mpDropLinks(QStringList &lines, double removed)
{
    bool changed = false;
    for (QString &line : lines) {
        if (hotKeyLineLinksTo(line, removed)) {
            line.clear();
            changed = true;
        }
    }
    return changed;
}

QByteArray mpRepairedBytes(const QStringList &lines)
{
    QStringList kept;
    for (const QString &line : lines) {
        if (!conv::Trim(line).isEmpty())
            kept << line;
    }
    return textfile::linesBytes(kept);
}

} // namespace

// Passes repeat until one changes nothing, so a file that another station adds or
// saves meanwhile is repaired too; every file is repaired in the same pass, since
// one file's repair never depends on another's. A pass writes and flushes every
// repaired file before any replaces its old one, and flushes the folder once.
SetRemoval gpHotKeySet_remove(const QString &sSetNumber)
{
    SetRemoval result;
    const double removed = conv::Val(sSetNumber);
    // No set has a number below 1, and every empty link would match 0.
    if (hotKeySetNumber("HKSET" + sSetNumber + ".SDF").isEmpty()) {
        result.problems << "\"" + sSetNumber +
                               "\" is not the number of a set; nothing was changed.";
        return result;
    }
    QStringList failed;
    ScreenYield yield;
    const auto fail = [&](const QString &path, const QString &error) {
        failed << QFileInfo(path).fileName();
        result.problems << QDir::toNativeSeparators(path) + ": " + error;
    };
    bool changed = true;
    while (changed) {
        changed = false;
        QList<platform::Replacement> repairs;
        QHash<QString, QByteArray> read;
        for (const QString &name : hotKeySetFiles()) {
            yield();
            if (conv::Val(hotKeySetDigits(name)) == removed || failed.contains(name))
                continue;
            const QString path = gDataPath.DataPath() + '/' + name;
            QByteArray bytes;
            QString error;
            if (!textfile::readBytes(path, bytes, &error)) {
                if (QFile::exists(path)) // gone meanwhile: nothing left to repair
                    fail(path, error);
                continue;
            }
            QStringList lines = textfile::splitLines(textfile::fromCp1252(bytes));
            if (!mpDropLinks(lines, removed))
                continue;
            changed = true;
            if (!versions::keep(path, bytes, &error)) {
                fail(path, error);
                continue;
            }
            repairs.append({path, mpRepairedBytes(lines), false, {}});
            read.insert(path, bytes);
        }
        // A file saved at another station since it was read is left to the next pass,
        // which keeps that station's file as a version first.
        platform::replaceFiles(repairs, [&](const platform::Replacement &repair) {
            yield();
            QByteArray now;
            return textfile::readBytes(repair.path, now) && now == read.value(repair.path);
        });
        for (const platform::Replacement &repair : repairs) {
            if (!repair.replaced && !repair.reason.isEmpty())
                fail(repair.path, repair.reason);
        }
    }
    if (!result.problems.isEmpty())
        return result;
    QFile set(hotKeySetPath(sSetNumber));
    QString error;
    if (!versions::keep(set.fileName(), &error)) {
        result.problems << QDir::toNativeSeparators(set.fileName()) + ": " + error;
        return result;
    }
    result.removed = set.remove() || !set.exists();
    if (!result.removed)
        result.problems << QDir::toNativeSeparators(set.fileName()) + ": " + set.errorString();
    return result;
}

namespace {

QString dataFile(const char *name)
{
    return gDataPath.DataPath() + '/' + name;
}

bool mpKeyFile_write(const QString &path, const QStringList &lines, const QString &kind)
{
    if (!gfbVersion_keep(path))
        return false;
    QString error;
    if (textfile::writeLines(path, lines, &error))
        return true;
    showWriteFailure(path, error, kind);
    return false;
}

} // namespace

void gpSpecialKey_read(SpecialKey &oButton)
{
    QString path;
    if (gbCouponKeys)
        path = dataFile("COUPON.BDF");
    else if (gbSpecialKeys)
        path = dataFile("SPECIAL.BDF");
    else
        return;
    QString text;
    if (!textfile::readText(path, text))
        return;
    for (QStringView view : textfile::splitLineViews(text)) {
        const QString line = view.toString();
        if (conv::Val(gfsTagValue(line, "[BUTTON]", "[")) - 1 != oButton.Index)
            continue;
        const QString label = gfsTagValue(line, "[CAPTION]", "[");
        const QString key = gfsTagValue(line, "[KEY]", "[");
        if (key != kCouponMarker) {
            oButton.Caption = label + '\r' + key;
            oButton.Tag = key;
        } else {
            oButton.Caption = label;
            oButton.Tag = QString(kCouponMarker) + '|' + gfsTagValue(line, "[VALUE]", "[");
        }
        return;
    }
}

bool gpSpecialKeys_write(const QString &sKey1, const QString &sKey2, const QString &sKey3)
{
    QStringList lines;
    const QString keys[] = {sKey1, sKey2, sKey3};
    for (int n = 0; n < 3; ++n) {
        if (conv::Trim(keys[n]).isEmpty())
            continue;
        // A text without a carriage return is all label and no character.
        const int cr = keys[n].indexOf('\r');
        const QString label = cr < 0 ? keys[n] : keys[n].left(cr);
        const QString character = cr < 0 ? QString() : keys[n].mid(cr + 1);
        lines << "[BUTTON]" + QString::number(n + 1) + "[CAPTION]" + label + "[KEY]" + character;
    }
    return mpKeyFile_write(dataFile("SPECIAL.BDF"), lines, "Special Keys");
}

bool gpCouponKeys_write(const SpecialKey &oKey1, const SpecialKey &oKey2, const SpecialKey &oKey3)
{
    QStringList lines;
    const SpecialKey *keys[] = {&oKey1, &oKey2, &oKey3};
    for (int n = 0; n < 3; ++n) {
        const QString caption = conv::Trim(keys[n]->Caption);
        if (caption.isEmpty())
            continue;
        // A key read from a special key line holds label, carriage return, character.
        const QString label =
            conv::Trim(caption.left(caption.indexOf(QRegularExpression("[\r\n]"))));
        lines << "[BUTTON]" + QString::number(n + 1) + "[CAPTION]" + label + "[KEY]" +
                     kCouponMarker + "[VALUE]" + keys[n]->Tag.mid(8);
    }
    return mpKeyFile_write(dataFile("COUPON.BDF"), lines, "Coupon Keys");
}

bool gfbCouponAmount_valid(const QString &sAmount)
{
    static const QRegularExpression amount("^ *([0-9]+\\.?[0-9]{0,2}|\\.[0-9]{1,2}) *$");
    return amount.match(sAmount).hasMatch();
}
