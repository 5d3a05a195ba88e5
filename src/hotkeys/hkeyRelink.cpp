#include "hotkeys/hkeyRelink.h"
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QMap>

namespace {

// Up to this many sets the Delete box names them.
constexpr qsizetype kSetsNamed = 6;

QString dataFile(const QString &name)
{
    return gDataPath.DataPath() + '/' + name;
}

QString counted(qsizetype n, const QString &one)
{
    return QString::number(n) + ' ' + one + (n == 1 ? "" : "s");
}

int tagNumber(const QString &line, const char *tag)
{
    return static_cast<int>(conv::Val(gfsTagValue(line, tag, "[")));
}

// As the reader tells lines apart: a column line first, then a key line.
bool isGroupLine(const QString &line)
{
    return line.contains(QLatin1String("[GROUP]"));
}

bool isKeyLine(const QString &line)
{
    return !isGroupLine(line) && line.contains(QLatin1String("[BUTTON]"));
}

// A key line that holds nothing a register shows, sells or opens.
bool emptyKeyLine(const QString &line)
{
    for (const char *tag : {"[CAPTION]", "[ITEM]", "[LINKSET]", "[ICON]"}) {
        if (conv::AboveBlank(conv::Trim(gfsTagValue(line, tag, "["))))
            return false;
    }
    return true;
}

// Where key `key` of column `group` is in a set's lines (`found`), or where it goes
// among the column's keys; index -1 when the set has no such column line.
struct Place {
    int index = -1;
    bool found = false;
};

Place placeOf(const QStringList &lines, int group, int key)
{
    Place place;
    int current = -1;
    for (int i = 1; i < lines.size(); ++i) {
        if (isGroupLine(lines[i])) {
            if (current == group)
                return place;
            current = tagNumber(lines[i], "[GROUP]");
            if (current == group)
                place.index = i + 1;
        } else if (current == group && isKeyLine(lines[i])) {
            const int k = tagNumber(lines[i], "[BUTTON]");
            if (k == key)
                return {i, true};
            if (k > key)
                return place;
            place.index = i + 1;
        }
    }
    return place;
}

bool placeIsFree(const QStringList &lines, const ClearedKey &key)
{
    const Place place = placeOf(lines, key.group, key.key);
    return place.found ? emptyKeyLine(lines[place.index]) : place.index >= 0;
}

QStringList linesOf(const QString &path)
{
    QStringList lines;
    return textfile::readLines(path, lines) ? lines : QStringList();
}

// The key lines of `lines` that open set `removed`, with their columns.
QList<ClearedKey> linkingLines(const QString &fileName, const QStringList &lines, double removed)
{
    QList<ClearedKey> found;
    int group = 0;
    for (const QString &line : lines) {
        if (isGroupLine(line))
            group = tagNumber(line, "[GROUP]");
        else if (isKeyLine(line) && hotKeyLineLinksTo(line, removed))
            found << ClearedKey{fileName, group, tagNumber(line, "[BUTTON]"), line};
    }
    return found;
}

// The set as the removal's repair leaves it: the linking lines and blank lines gone.
QStringList repaired(const QStringList &lines, double removed)
{
    QStringList kept;
    for (const QString &line : lines) {
        if (!conv::Trim(line).isEmpty() && !hotKeyLineLinksTo(line, removed))
            kept << line;
    }
    return kept;
}

// The keys the repair took out of one set: its newest version kept by the time the
// removed set was, provided the state that followed it is exactly that repair.
QList<ClearedKey> clearedIn(const QString &fileName, const QDateTime &removal, double removed)
{
    const QList<versions::Version> kept = versions::list(fileName);
    for (qsizetype i = 0; i < kept.size(); ++i) {
        if (kept[i].time > removal)
            continue;
        const QStringList before = linesOf(kept[i].path);
        const QStringList after = linesOf(i > 0 ? kept[i - 1].path : dataFile(fileName));
        if (repaired(before, removed) != after)
            return {};
        return linkingLines(fileName, before, removed);
    }
    return {};
}

} // namespace

QList<LinkingKeys> hotKeySetLinkingKeys(const QString &sSetNumber)
{
    const double set = conv::Val(sSetNumber);
    QList<LinkingKeys> result;
    for (const QString &name : hotKeySetFiles()) {
        if (conv::Val(hotKeySetDigits(name)) == set)
            continue;
        const qsizetype keys = linkingLines(name, linesOf(dataFile(name)), set).size();
        if (keys > 0)
            result << LinkingKeys{name, static_cast<int>(keys)};
    }
    return result;
}

QString hotKeySetLinkingText(const QList<LinkingKeys> &linking)
{
    int keys = 0;
    QStringList numbers;
    for (const LinkingKeys &l : linking) {
        keys += l.keys;
        numbers << hotKeySetShownDigits(l.fileName);
    }
    QString text = counted(keys, "key") + " in " + counted(linking.size(), "other set");
    if (linking.size() <= kSetsNamed)
        text += " (" + QString(linking.size() == 1 ? "set " : "sets ") + numbers.join(", ") + ")";
    return text;
}

QList<ClearedKey> hotKeySetClearedKeys(const QString &setFileName)
{
    const QList<versions::Version> setVersions = versions::list(setFileName);
    const double removed = conv::Val(hotKeySetNumber(setFileName));
    if (setVersions.isEmpty() || removed < 1)
        return {};
    QList<ClearedKey> result;
    for (const QString &name : versions::keptFiles()) {
        if (name == setFileName || hotKeySetNumber(name).isEmpty())
            continue;
        const QStringList now = linesOf(dataFile(name));
        for (const ClearedKey &key : clearedIn(name, setVersions.first().time, removed)) {
            if (placeIsFree(now, key))
                result << key;
        }
    }
    return result;
}

int hotKeySetClearedKeys_restore(const QList<ClearedKey> &keys, QStringList *problems)
{
    QMap<QString, QList<ClearedKey>> byFile;
    for (const ClearedKey &key : keys) byFile[key.fileName] << key;
    int restored = 0;
    for (auto file = byFile.cbegin(); file != byFile.cend(); ++file) {
        const QString path = dataFile(file.key());
        QStringList lines = linesOf(path);
        int put = 0;
        for (const ClearedKey &key : file.value()) {
            if (!placeIsFree(lines, key))
                continue;
            const Place place = placeOf(lines, key.group, key.key);
            if (place.found)
                lines[place.index] = key.line;
            else
                lines.insert(place.index, key.line);
            ++put;
        }
        QString error;
        if (put == 0)
            continue;
        if (versions::keep(path, &error) && textfile::writeLines(path, lines, &error))
            restored += put;
        else if (problems)
            *problems << QDir::toNativeSeparators(path) + ": " + error;
    }
    return restored;
}
