// Export Sets: the chosen sets, their pictures and their items' codes into one package.
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "common/sm_Text.h"
#include "database/ZelDBSM_MSDE.h"
#include "database/zelDBSM_Common.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage_internal.h"
#include "hotkeys/hkeyZip.h"
#include "settings/clsDataPath.h"
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace setpackage {

namespace {

using namespace detail;

struct SetFile {
    QString number; // file form
    QByteArray bytes;
    QString title;
    HotKeySet groups;
};

QString fileForm(const QString &number)
{
    return gfsText_pad(1, 2, QString::number(static_cast<int>(conv::Val(number))), "0");
}

bool readSet(const QString &number, SetFile &set, QString *error)
{
    QFile file(hotKeySetPath(number));
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QDir::toNativeSeparators(file.fileName()) + ": " + file.errorString() + '.';
        return false;
    }
    set.number = number;
    set.bytes = file.readAll();
    hotKeySetClear(set.groups);
    set.title = hotKeySetParse(textfile::fromCp1252(set.bytes), set.groups);
    return true;
}

QJsonObject itemJson(const SetFile &set, int g, int k, const HotKeyButton &b,
                     const std::optional<SourceItem> &item)
{
    QJsonObject o{{"set", set.number},
                  {"column", g},
                  {"key", k},
                  {"item", b.Item},
                  {"idSelect", b.IdSelect},
                  {"found", item.has_value()}};
    if (item) {
        o["sl"] = item->sl;
        o["itemId"] = item->itemId;
        o["upc"] = QJsonArray::fromStringList(item->upc);
        o["description"] = item->description;
    }
    return o;
}

class Exporter {
public:
    Exporter(const ExportRequest &request, const Progress &progress)
        : m_request(request), m_progress(progress)
    {
    }

    ExportResult run(const QString &file)
    {
        if (!readSets() || !collect() || !write(file))
            return m_result;
        m_result.ok = true;
        return m_result;
    }

private:
    bool fail(const QString &error)
    {
        m_result.error = error;
        return false;
    }

    bool readSets()
    {
        QSet<QString> seen;
        for (const QString &n : m_request.sets) {
            const QString number = fileForm(n);
            if (conv::Val(number) < 1 || seen.contains(number))
                continue;
            if (m_progress &&
                !m_progress(static_cast<int>(seen.size()), static_cast<int>(m_request.sets.size())))
                return fail("The export was stopped; no package was made.");
            seen.insert(number);
            SetFile set;
            QString error;
            if (!readSet(number, set, &error))
                return fail(error);
            m_sets << set;
        }
        if (m_sets.isEmpty())
            return fail("There is no set to export.");
        return true;
    }

    struct KeyPlace {
        int set, group, key;
    };

    // The items of all keys are asked for at once, a few statements in all.
    bool collect()
    {
        QList<ItemName> names;
        QList<KeyPlace> places;
        for (int s = 0; s < m_sets.size(); ++s) {
            const SetFile &set = m_sets[s];
            m_manifestSets.append(QJsonObject{{"number", set.number},
                                              {"title", set.title},
                                              {"file", kSetFolder + setName(set.number)}});
            for (int g = 1; g <= 4; ++g) {
                for (int k = 1; k <= 8; ++k) {
                    const HotKeyButton &b = set.groups[g].Buttons[k];
                    addPicture(b.Icon);
                    if (sellsItem(b)) {
                        names << ItemName{b.Item, b.IdSelect};
                        places << KeyPlace{s, g, k};
                    }
                }
            }
        }
        const DbAction action; // a database fault is told once for the whole export
        QList<std::optional<SourceItem>> items;
        if (!readSourceItems(names, items))
            return fail("The inventory could not be read, so the items of the keys cannot be "
                        "described; no package was made.");
        for (qsizetype i = 0; i < places.size(); ++i) {
            const KeyPlace &p = places[i];
            m_items.append(itemJson(m_sets[p.set], p.group, p.key,
                                    m_sets[p.set].groups[p.group].Buttons[p.key], items[i]));
        }
        m_result.itemKeys = static_cast<int>(m_items.size());
        return true;
    }

    static QString setName(const QString &number) { return "HKSET" + number + ".SDF"; }

    void addPicture(const QString &icon)
    {
        const QString name = conv::Trim(icon);
        if (name.isEmpty() || m_pictureNames.contains(name.toLower()))
            return;
        m_pictureNames.insert(name.toLower());
        const QString path = gsHotKeyPicturePath + name;
        if (!plainFileName(name) || !QFileInfo(path).isFile())
            m_result.notes << "The picture \"" + name +
                                  "\" is not in the pictures folder; keys "
                                  "name it, but the package does not hold it.";
        else
            m_pictures << name;
    }

    bool write(const QString &file)
    {
        ziparchive::Writer zip;
        QString error;
        if (!zip.open(file, &error))
            return fail(QDir::toNativeSeparators(file) + ": " + error);
        for (const SetFile &set : m_sets) {
            if (!zip.addBytes(kSetFolder + setName(set.number), set.bytes, true, &error))
                return fail(error);
        }
        for (const QString &name : m_pictures) {
            if (!zip.addFile(kPictureFolder + name, gsHotKeyPicturePath + name, &error))
                return fail(error);
        }
        QJsonObject manifest = header();
        if (!addKeyFile(zip, m_request.special, kSpecialFile, "special", manifest) ||
            !addKeyFile(zip, m_request.coupon, kCouponFile, "coupon", manifest))
            return false;
        manifest["sets"] = m_manifestSets;
        manifest["pictures"] = QJsonArray::fromStringList(m_pictures);
        manifest["items"] = m_items;
        if (!zip.addBytes(kManifest, QJsonDocument(manifest).toJson(QJsonDocument::Compact), true, &error) ||
            !zip.commit(&error))
            return fail(QDir::toNativeSeparators(file) + ": " + error + " No package was made.");
        m_result.sets = static_cast<int>(m_sets.size());
        m_result.pictures = static_cast<int>(m_pictures.size());
        return true;
    }

    QJsonObject header() const
    {
        return {{"format", kFormat},
                {"store", QJsonObject{{"number", gsStoreNumber},
                                      {"name", conv::Trim(gCommonRecord.text("Cname"))}}},
                {"date", QDateTime::currentDateTime().toString(Qt::ISODate)}};
    }

    bool addKeyFile(ziparchive::Writer &zip, bool wanted, const char *name, const char *key,
                    QJsonObject &manifest)
    {
        if (!wanted)
            return true;
        QFile file(gDataPath.DataPath() + '/' + name);
        if (!file.exists()) {
            m_result.notes
                << QString("There is no %1 in the data folder; the package holds none.").arg(name);
            return true;
        }
        QString error;
        if (!file.open(QIODevice::ReadOnly))
            return fail(QDir::toNativeSeparators(file.fileName()) + ": " + file.errorString() +
                        '.');
        if (!zip.addBytes(name, file.readAll(), true, &error))
            return fail(error);
        manifest[key] = name;
        return true;
    }

    const ExportRequest &m_request;
    const Progress &m_progress;
    ExportResult m_result;
    QList<SetFile> m_sets;
    QJsonArray m_manifestSets, m_items;
    QStringList m_pictures;
    QSet<QString> m_pictureNames;
};

} // namespace

QStringList linkedSets(const QStringList &sets)
{
    QSet<int> chosen, found;
    QList<int> queue;
    for (const QString &n : sets) chosen.insert(static_cast<int>(conv::Val(n)));
    queue = chosen.values();
    while (!queue.isEmpty()) {
        SetFile set;
        QString error;
        if (!readSet(fileForm(QString::number(queue.takeFirst())), set, &error))
            continue;
        for (int g = 1; g <= 4; ++g) {
            for (int k = 1; k <= 8; ++k) {
                const int link = static_cast<int>(conv::Val(set.groups[g].Buttons[k].LinkSet));
                if (link < 1 || chosen.contains(link) || found.contains(link) ||
                    !QFile::exists(hotKeySetPath(fileForm(QString::number(link)))))
                    continue;
                found.insert(link);
                queue << link;
            }
        }
    }
    QList<int> sorted = found.values();
    std::sort(sorted.begin(), sorted.end());
    QStringList result;
    for (int n : sorted) result << fileForm(QString::number(n));
    return result;
}

ExportResult exportSets(const QString &file, const ExportRequest &request, const Progress &progress)
{
    return Exporter(request, progress).run(file);
}

} // namespace setpackage
