#include "hotkeys/hkeySetFix.h"
#include "common/TextFile.h"
#include "hotkeys/hkeyVersions.h"
#include "settings/clsDataPath.h"
#include <QMap>

namespace setcheck {

Fix fixFor(const Finding &finding)
{
    if (hotKeySetNumber(finding.fileName).isEmpty() || finding.key < 1)
        return Fix::None;
    switch (finding.kind) {
    case Kind::MissingLink:
    case Kind::SelfLink:
        return Fix::ClearLink;
    case Kind::MissingPicture:
        return Fix::ClearPicture;
    case Kind::ItemMissing:
    case Kind::ItemDeleted:
        return Fix::EditKey;
    case Kind::LeftOver:
        return Fix::ClearKey;
    default:
        return Fix::None;
    }
}

QString fixCaption(Fix fix)
{
    switch (fix) {
    case Fix::ClearLink:
        return "Clear the Link";
    case Fix::ClearPicture:
        return "Clear the Picture";
    case Fix::EditKey:
        return "Edit the Key...";
    case Fix::ClearKey:
        return "Clear the Key";
    default:
        return QString();
    }
}

bool changeSet(const Finding &finding, const std::function<void(HotKeySet &)> &change)
{
    const QString number = hotKeySetNumber(finding.fileName);
    const QString path = gDataPath.DataPath() + '/' + finding.fileName;
    if (!gfbOtherStation_check(path, {true, finding.bytes}, "Hot keys set " + number))
        return false;
    HotKeySet groups;
    hotKeySetClear(groups);
    const QString title = hotKeySetParse(textfile::fromCp1252(finding.bytes), groups);
    change(groups);
    return hotKeySetWrite(number, groups, title);
}

namespace {

void apply(Fix fix, HotKeyButton &key)
{
    if (fix == Fix::ClearLink)
        key.LinkSet.clear();
    else if (fix == Fix::ClearPicture)
        key.Icon.clear();
    else if (fix == Fix::ClearKey)
        key = HotKeyButton();
}

} // namespace

int applyFixes(const QList<Finding> &findings)
{
    QMap<QString, QList<Finding>> bySet;
    for (const Finding &f : findings) {
        const Fix fix = fixFor(f);
        if (fix != Fix::None && fix != Fix::EditKey)
            bySet[f.fileName] << f;
    }
    int mended = 0;
    for (const QList<Finding> &keys : bySet) {
        const bool saved = changeSet(keys.first(), [&keys](HotKeySet &groups) {
            for (const Finding &f : keys) apply(fixFor(f), groups[f.group].Buttons[f.key]);
        });
        if (saved)
            mended += static_cast<int>(keys.size());
    }
    return mended;
}

} // namespace setcheck
