// What an import would do, in words: the preview's lines and the command line's report.
#include "hotkeys/hkeyPackage.h"
#include <QDir>

namespace setpackage {

QString setOutcome(const Plan &plan, const PackageSet &set)
{
    if (replacesSet(plan, set.target))
        return "replaces set " + set.target + " of this store (a version is kept)";
    if (set.target == set.number)
        return "becomes set " + set.target;
    return "becomes set " + set.target + " (" + set.number + " is taken here)";
}

QString itemOutcome(const ItemKey &key)
{
    if (key.match == Match::None)
        return "NOT FOUND: kept as written; the key sells nothing until it is set";
    QString text =
        "found by " + matchText(key.match) + " " + key.code + ": " + key.storeDescription;
    if (key.newItem != key.item || key.newIdSelect != key.idSelect)
        text += " (the key will hold " + key.newItem + ")";
    return text;
}

QString linkOutcome(const Plan &plan, const LinkKey &key)
{
    bool inside = false;
    const QString link = targetLink(plan, key.link, &inside);
    if (!inside)
        return "opens set " + key.link + ", which is not in the package: kept as written";
    return "opens set " + key.link + ", which will be set " + link;
}

QString pictureOutcome(const Picture &picture)
{
    switch (picture.state) {
    case Picture::Add:
        return "added";
    case Picture::Same:
        return "already here with the same bytes";
    case Picture::Renamed:
        break;
    }
    return "a different picture of that name is here: added as " + picture.target;
}

QString keyPlace(const Plan &plan, int set, int group, int key)
{
    return QString("set %1, column %2, key %3").arg(plan.sets[set].number).arg(group).arg(key);
}

QString reportText(const Plan &plan)
{
    QStringList lines;
    lines << "Package: " + QDir::toNativeSeparators(plan.file);
    lines << "Made by store " + plan.storeNumber + " (" + plan.storeName + ") on " + plan.date;
    lines << ""
          << "Sets:";
    for (const PackageSet &set : plan.sets)
        lines << "  " + set.number + " " + set.title + ": " + setOutcome(plan, set);
    int found[4] = {};
    lines << ""
          << "Keys that sell an item:";
    for (const ItemKey &key : plan.items) {
        ++found[static_cast<int>(key.match)];
        lines << "  " + keyPlace(plan, key.set, key.group, key.key) + " \"" + key.caption + "\", " +
                     key.item + " " + key.source.description + ": " + itemOutcome(key);
    }
    lines << ""
          << "Keys that open a set:";
    for (const LinkKey &key : plan.links)
        lines << "  " + keyPlace(plan, key.set, key.group, key.key) + " \"" + key.caption +
                     "\": " + linkOutcome(plan, key);
    lines << ""
          << "Pictures:";
    for (const Picture &p : plan.pictures) lines << "  " + p.name + ": " + pictureOutcome(p);
    for (const QString &name : plan.missingPictures)
        lines << "  " + name + ": named by keys, not in the package";
    if (plan.hasSpecial || plan.hasCoupon)
        lines << "";
    if (plan.hasSpecial)
        lines << "Special keys: SPECIAL.BDF replaces this store's (a version is kept)";
    if (plan.hasCoupon)
        lines << "Coupon keys: COUPON.BDF replaces this store's (a version is kept)";
    lines << ""
          << QString("%1 sets; item keys found by S/L %2, by Item ID %3, by UPC %4, not found %5.")
                 .arg(plan.sets.size())
                 .arg(found[0])
                 .arg(found[1])
                 .arg(found[2])
                 .arg(found[3]);
    return lines.join('\n') + '\n';
}

} // namespace setpackage
