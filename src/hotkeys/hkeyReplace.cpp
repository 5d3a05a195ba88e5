#include "hotkeys/hkeyReplace.h"
#include "common/TextFile.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QFileInfo>
#include <QMap>

namespace replace {
namespace {

QString pathOf(const QString &fileName)
{
    return gDataPath.DataPath() + '/' + fileName;
}

QString setName(const QString &fileName)
{
    return "set " + hotKeySetShownDigits(fileName);
}

QByteArray bytesNow(const QString &fileName)
{
    QByteArray bytes;
    return textfile::readBytes(pathOf(fileName), bytes) ? bytes : QByteArray();
}

// Replaces the files whose bytes are still `expected`, each kept in Versions first.
// The names of those that were not, with the reason.
QStringList replaceAll(QList<platform::Replacement> &files,
                       const QHash<QString, QByteArray> &expected)
{
    QStringList problems;
    QList<platform::Replacement> keptFirst;
    for (platform::Replacement &file : files) {
        QString error;
        if (versions::keep(file.path, expected.value(file.path), &error))
            keptFirst << file;
        else
            problems << QDir::toNativeSeparators(file.path) + ": " + error;
    }
    platform::replaceFiles(keptFirst, [&expected](const platform::Replacement &file) {
        QByteArray now;
        return textfile::readBytes(file.path, now) && now == expected.value(file.path);
    });
    files = keptFirst;
    for (const platform::Replacement &file : files) {
        if (!file.replaced)
            problems << QDir::toNativeSeparators(file.path) + ": " +
                            (file.reason.isEmpty() ? QString("changed at another station meanwhile")
                                                   : file.reason);
    }
    return problems;
}

} // namespace

HotKeyButton keyOf(const setcheck::Finding &f)
{
    HotKeySet groups;
    hotKeySetClear(groups);
    hotKeySetParse(textfile::fromCp1252(f.bytes), groups);
    return groups[f.group].Buttons[f.key];
}

HotKeyButton replaced(const setcheck::Finding &f, const Target &to)
{
    HotKeyButton key = keyOf(f);
    key.Item = to.item;
    key.IdSelect = to.idSelect;
    if (!to.label.isEmpty())
        key.Caption = to.label;
    return key;
}

Outcome apply(const QList<setcheck::Finding> &keys, const Target &to)
{
    QMap<QString, QList<setcheck::Finding>> bySet;
    for (const setcheck::Finding &f : keys) bySet[f.fileName] << f;
    Outcome outcome;
    QList<platform::Replacement> files;
    QHash<QString, QByteArray> read;
    QHash<QString, int> keysOf;
    for (const QList<setcheck::Finding> &set : bySet) {
        const setcheck::Finding &first = set.first();
        if (bytesNow(first.fileName) != first.bytes) {
            outcome.problems << setName(first.fileName) +
                                    " was changed at another station since the list was made: "
                                    "it was left as it is";
            continue;
        }
        HotKeySet groups;
        hotKeySetClear(groups);
        const QString title = hotKeySetParse(textfile::fromCp1252(first.bytes), groups);
        for (const setcheck::Finding &f : set) groups[f.group].Buttons[f.key] = replaced(f, to);
        const QString path = pathOf(first.fileName);
        files.append({path, textfile::linesBytes(hotKeySetLines(groups, title)), false, {}});
        read.insert(path, first.bytes);
        keysOf.insert(path, static_cast<int>(set.size()));
    }
    outcome.problems << replaceAll(files, read);
    for (const platform::Replacement &file : files) {
        if (!file.replaced)
            continue;
        const QString name = QFileInfo(file.path).fileName();
        outcome.written << Written{name, read.value(file.path), file.bytes};
        outcome.keys += keysOf.value(file.path);
    }
    return outcome;
}

QStringList changedSince(const QList<Written> &written)
{
    QStringList changed;
    for (const Written &w : written) {
        if (bytesNow(w.fileName) != w.after)
            changed << setName(w.fileName);
    }
    return changed;
}

bool undo(const QList<Written> &written, QStringList *problems)
{
    QList<platform::Replacement> files;
    QHash<QString, QByteArray> expected;
    for (const Written &w : written) {
        files.append({pathOf(w.fileName), w.before, false, {}});
        expected.insert(pathOf(w.fileName), w.after);
    }
    const QStringList failed = replaceAll(files, expected);
    if (problems)
        *problems = failed;
    return failed.isEmpty();
}

} // namespace replace
