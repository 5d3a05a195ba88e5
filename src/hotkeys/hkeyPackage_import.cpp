// Import Sets: a package read and checked, and the plan of what it would change.
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage_internal.h"
#include "hotkeys/hkeyZip.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

namespace setpackage {

namespace {

using namespace detail;

QString quoted(const QString &entry)
{
    return "The entry \"" + entry + "\" of the package";
}

// Names that could land outside the folder the entry is meant for: "../", an
// absolute path, a drive letter, a Windows separator.
bool climbsOut(const QString &name)
{
    if (name.startsWith('/') || name.contains('\\') || name.contains(':'))
        return true;
    const QStringList parts = name.split('/');
    for (int i = 0; i < parts.size(); ++i) {
        const bool last = i == parts.size() - 1;
        if (parts[i] == ".." || parts[i] == "." || (parts[i].isEmpty() && !last))
            return true;
    }
    return false;
}

QString setNumberOf(const QString &entry)
{
    static const QRegularExpression name("^sets/HKSET([0-9]{2,3})\\.SDF$");
    const QRegularExpressionMatch m = name.match(entry);
    // Only the file form, so no two entries name one set.
    const int n = m.hasMatch() ? static_cast<int>(conv::Val(m.captured(1))) : 0;
    return n >= 1 && m.captured(1) == gfsText_pad(1, 2, QString::number(n), "0") ? m.captured(1)
                                                                                 : QString();
}

QString pictureNameOf(const QString &entry)
{
    return entry.startsWith(kPictureFolder) ? entry.mid(QString(kPictureFolder).size()) : QString();
}

int freeNumber(const QSet<int> &taken)
{
    int n = 1;
    while (taken.contains(n)) ++n;
    return n;
}

QString fileForm(int n)
{
    return gfsText_pad(1, 2, QString::number(n), "0");
}

class PackageReader {
public:
    PackageReader(const QString &file, const Progress &progress) : m_progress(progress)
    {
        m_plan.file = file;
    }

    std::optional<Plan> run(QString *error)
    {
        const bool ok = m_zip.open(m_plan.file, &m_error) && checkEntries() && readManifest() &&
                        readSets() && readPictures() && matchItems();
        if (!ok) {
            *error = QDir::toNativeSeparators(m_plan.file) + "\r\r" + m_error +
                     "\rNothing was imported.";
            return std::nullopt;
        }
        proposeNumbers();
        return m_plan;
    }

private:
    bool fail(const QString &error)
    {
        m_error = error;
        return false;
    }

    bool checkEntries()
    {
        const QList<ziparchive::Entry> &entries = m_zip.entries();
        if (entries.size() > kMaxEntries)
            return fail(QString("The package holds %1 entries; a set package holds at most %2.")
                            .arg(entries.size())
                            .arg(kMaxEntries));
        QHash<QString, QString> byFolded; // Windows sees names that differ in case as one
        for (int i = 0; i < entries.size(); ++i) {
            const QString &name = entries[i].name;
            if (climbsOut(name))
                return fail(quoted(name) + " leads out of its folder.");
            const QString folded = name.toLower();
            if (byFolded.contains(folded))
                return fail(quoted(name) + " has the same name as \"" + byFolded[folded] +
                            "\" but for upper and lower case.");
            byFolded.insert(folded, name);
            if (!takeEntry(i, entries[i]))
                return false;
        }
        if (m_manifest < 0)
            return fail("The package has no manifest (" + QString(kManifest) +
                        "): it was not made by Export Sets.");
        return true;
    }

    bool takeEntry(int index, const ziparchive::Entry &entry)
    {
        const QString &name = entry.name;
        if (name.endsWith('/') && (name == kSetFolder || name == kPictureFolder))
            return true;
        if (name == kManifest)
            m_manifest = index;
        else if (!setNumberOf(name).isEmpty())
            m_setEntries << index;
        else if (name == kSpecialFile)
            m_special = index;
        else if (name == kCouponFile)
            m_coupon = index;
        else if (plainFileName(pictureNameOf(name))) {
            Picture p;
            p.name = pictureNameOf(name);
            p.entry = index;
            m_plan.pictures << p;
        } else
            return fail(quoted(name) + " is not part of a set package.");
        return true;
    }

    bool readEntry(int index, qint64 limit, QByteArray &bytes)
    {
        const ziparchive::Entry &entry = m_zip.entries()[index];
        QString error;
        if (entry.size > limit)
            error = QString("It is larger than %1 %2.")
                        .arg(limit >= 1024 * 1024 ? limit / (1024 * 1024) : limit / 1024)
                        .arg(limit >= 1024 * 1024 ? "MB" : "KB");
        else if (m_zip.read(index, limit, bytes, &error))
            return true;
        return fail(quoted(entry.name) + " cannot be taken: " + error);
    }

    bool readManifest()
    {
        QByteArray bytes;
        if (!readEntry(m_manifest, kMaxManifest, bytes))
            return false;
        QJsonParseError parse;
        const QJsonDocument doc = QJsonDocument::fromJson(bytes, &parse);
        if (!doc.isObject())
            return fail(quoted(kManifest) + " cannot be read: " +
                        (parse.error ? parse.errorString() : QString("it is not an object")) + '.');
        const QJsonObject manifest = doc.object();
        const int format = manifest["format"].toInt(0);
        if (format < 1)
            return fail(quoted(kManifest) + " gives no format version.");
        if (format > kFormat)
            return fail(QString("The package was made by a newer version of this program "
                                "(package format %1; this version reads format %2 and older). "
                                "Install the newer version to import it.")
                            .arg(format)
                            .arg(kFormat));
        const QJsonObject store = manifest["store"].toObject();
        m_plan.storeNumber = store["number"].toVariant().toString();
        m_plan.storeName = store["name"].toString();
        m_plan.date = manifest["date"].toString();
        for (const QJsonValue v : manifest["items"].toArray()) {
            const QJsonObject o = v.toObject();
            if (!o["found"].toBool())
                continue;
            m_sources.insert(itemKey(o["set"].toString(), o["column"].toInt(), o["key"].toInt(),
                                     o["item"].toString(), o["idSelect"].toString()),
                             SourceItem{o["sl"].toString(), o["itemId"].toString(),
                                        o["upc"].toVariant().toStringList(),
                                        o["description"].toString()});
        }
        return true;
    }

    static QString itemKey(const QString &set, int g, int k, const QString &item,
                           const QString &idSelect)
    {
        return QString("%1/%2/%3/%4/%5").arg(set).arg(g).arg(k).arg(idSelect, item);
    }

    bool readSets()
    {
        for (int index : m_setEntries) {
            const QString entry = m_zip.entries()[index].name;
            QByteArray bytes;
            if (!readEntry(index, kMaxSetFile, bytes))
                return false;
            PackageSet set;
            set.number = setNumberOf(entry);
            hotKeySetClear(set.groups);
            QStringList skipped;
            const QString text = textfile::fromCp1252(bytes);
            set.title = hotKeySetParse(text, set.groups, &skipped);
            if (!text.startsWith("[SET]"))
                skipped.prepend("line 1 is not the title line ([SET])");
            if (!skipped.isEmpty())
                return fail(quoted(entry) +
                            " is not a set file the program can read: " + skipped.first() + '.');
            m_plan.sets << set;
        }
        std::sort(m_plan.sets.begin(), m_plan.sets.end(),
                  [](const PackageSet &a, const PackageSet &b) {
                      return conv::Val(a.number) < conv::Val(b.number);
                  });
        if (m_plan.sets.isEmpty())
            return fail("The package holds no set.");
        m_plan.hasSpecial = m_plan.special = m_special >= 0;
        m_plan.hasCoupon = m_plan.coupon = m_coupon >= 0;
        for (int index : {m_special, m_coupon}) {
            QByteArray bytes;
            if (index >= 0 && !readEntry(index, kMaxSetFile, bytes))
                return false;
        }
        return true;
    }

    // Every picture is read once here, so a bad one stops the import before anything is written.
    bool readPictures()
    {
        QHash<QString, QString> existing; // folded name -> name, as the folder has them
        for (const QString &name :
             QDir(gsHotKeyPicturePath).entryList(QDir::Files | QDir::Hidden | QDir::System))
            existing.insert(name.toLower(), name);
        QSet<QString> taken(existing.keyBegin(), existing.keyEnd());
        QSet<QString> named;
        for (const PackageSet &set : m_plan.sets) {
            for (int g = 1; g <= 4; ++g) {
                for (int k = 1; k <= 8; ++k)
                    named.insert(conv::Trim(set.groups[g].Buttons[k].Icon));
            }
        }
        for (Picture &p : m_plan.pictures) {
            QByteArray bytes;
            if (!readEntry(p.entry, kMaxPicture, bytes))
                return false;
            p.target = p.name;
            const QString folded = p.name.toLower();
            if (existing.contains(folded)) {
                QFile mine(gsHotKeyPicturePath + existing[folded]);
                const bool same = mine.open(QIODevice::ReadOnly) && mine.readAll() == bytes;
                p.state = same ? Picture::Same : Picture::Renamed;
                p.target = same ? existing[folded] : freeName(p.name, taken);
            }
            taken.insert(p.target.toLower());
            named.remove(p.name);
        }
        named.remove(QString());
        m_plan.missingPictures = QStringList(named.begin(), named.end());
        m_plan.missingPictures.sort();
        return true;
    }

    static QString freeName(const QString &name, const QSet<QString> &taken)
    {
        const QFileInfo info(name);
        const QString base = info.completeBaseName();
        const QString suffix = info.suffix().isEmpty() ? QString() : '.' + info.suffix();
        for (int n = 2;; ++n) {
            const QString candidate = QString("%1-%2%3").arg(base).arg(n).arg(suffix);
            if (!taken.contains(candidate.toLower()))
                return candidate;
        }
    }

    bool matchItems()
    {
        for (int s = 0; s < m_plan.sets.size(); ++s) {
            if (m_progress && !m_progress(s, static_cast<int>(m_plan.sets.size())))
                return fail("The import was stopped.");
            for (int g = 1; g <= 4; ++g) {
                for (int k = 1; k <= 8; ++k) addKey(s, g, k);
            }
        }
        const DbAction action; // a database fault is told once for the whole package
        if (!setpackage::detail::matchItems(m_plan.items))
            return fail("This store's inventory could not be read, so the items of the keys "
                        "cannot be found.");
        return true;
    }

    void addKey(int s, int g, int k)
    {
        const PackageSet &set = m_plan.sets[s];
        const HotKeyButton &b = set.groups[g].Buttons[k];
        if (!b.LinkSet.isEmpty()) {
            m_plan.links << LinkKey{s, g, k, b.Caption, b.LinkSet};
            return;
        }
        if (!sellsItem(b))
            return;
        ItemKey key;
        key.set = s;
        key.group = g;
        key.key = k;
        key.caption = b.Caption;
        key.item = b.Item;
        key.idSelect = b.IdSelect;
        key.source = m_sources.value(itemKey(set.number, g, k, b.Item, b.IdSelect), SourceItem{});
        m_plan.items << key;
    }

    // Its own number when this store has no such set, else the lowest number free.
    void proposeNumbers()
    {
        QSet<int> taken;
        for (const QString &name : hotKeySetFiles()) {
            const QString number = hotKeySetNumber(name);
            if (!number.isEmpty())
                m_plan.usedNumbers << static_cast<int>(conv::Val(number));
        }
        std::sort(m_plan.usedNumbers.begin(), m_plan.usedNumbers.end());
        taken = QSet<int>(m_plan.usedNumbers.begin(), m_plan.usedNumbers.end());
        for (PackageSet &set : m_plan.sets) {
            const int own = static_cast<int>(conv::Val(set.number));
            const int n = taken.contains(own) ? freeNumber(taken) : own;
            taken.insert(n);
            set.target = fileForm(n);
        }
    }

    Plan m_plan;
    const Progress &m_progress;
    ziparchive::Reader m_zip;
    QString m_error;
    int m_manifest = -1, m_special = -1, m_coupon = -1;
    QList<int> m_setEntries;
    QHash<QString, SourceItem> m_sources;
};

} // namespace

std::optional<Plan> readPackage(const QString &file, QString *error, const Progress &progress)
{
    return PackageReader(file, progress).run(error);
}

QString targetLink(const Plan &plan, const QString &link, bool *inside)
{
    const double n = conv::Val(link);
    for (const PackageSet &set : plan.sets) {
        if (conv::Val(set.number) == n) {
            if (inside)
                *inside = true;
            return QString::number(static_cast<int>(conv::Val(set.target)));
        }
    }
    if (inside)
        *inside = false;
    return link;
}

bool replacesSet(const Plan &plan, const QString &target)
{
    return plan.usedNumbers.contains(static_cast<int>(conv::Val(target)));
}

QString checkTargets(const Plan &plan)
{
    QHash<int, QString> given;
    for (const PackageSet &set : plan.sets) {
        const int n = static_cast<int>(conv::Val(set.target));
        if (n < 1 || n > 999)
            return "Set " + set.number + " of the package needs a number from 1 to 999.";
        if (given.contains(n))
            return "Sets " + given[n] + " and " + set.number +
                   " of the package would both become set " + fileForm(n) +
                   ". Give one of them another number.";
        given.insert(n, set.number);
    }
    return QString();
}

} // namespace setpackage
