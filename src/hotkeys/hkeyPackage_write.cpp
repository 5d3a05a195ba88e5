// Writing an import: every file first beside its place as a temporary file, then
// all put in place, so a full disk or a failure on the way leaves the data folder
// as it was.
#include "common/Conversions.h"
#include "common/TextFile.h"
#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyPackage_internal.h"
#include "hotkeys/hkeyVersions.h"
#include "hotkeys/hkeyZip.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <filesystem>

namespace setpackage {

namespace {

using namespace detail;

std::filesystem::path fsPath(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

// One file of the import: the new bytes wait under `staged`, and a copy of the
// file it replaces under `backup`, both in the file's own folder.
struct Output {
    QString path;
    QString staged, backup;
    bool placed = false;
};

QString besideName(const QString &path)
{
    return QFileInfo(path).absolutePath() + '/' + platform::temporaryNameFor(path);
}

class PlanWriter {
public:
    PlanWriter(const Plan &plan, const Progress &progress) : m_plan(plan), m_progress(progress) {}

    ~PlanWriter()
    {
        for (const Output &o : m_outputs) {
            for (const QString &temp : {o.staged, o.backup}) {
                if (!temp.isEmpty())
                    QFile::remove(temp);
            }
        }
    }

    bool run(QString *error)
    {
        if (!m_zip.open(m_plan.file, &m_error) || !stageSets() || !stagePictures() ||
            !stageKeyFiles() || !keepVersions() || !place()) {
            *error = m_error + "\rNothing was imported; the data folder is as it was.";
            return false;
        }
        return true;
    }

private:
    bool fail(const QString &path, const QString &why)
    {
        m_error = QDir::toNativeSeparators(path) + ": " + why;
        return false;
    }

    bool stage(const QString &path, const QStringList *lines, const QByteArray &bytes)
    {
        Output o{path, besideName(path), QString()};
        QString why;
        const bool ok = lines ? textfile::writeLines(o.staged, *lines, &why)
                              : platform::replaceFile(o.staged, bytes, &why);
        if (!ok)
            return fail(path, why);
        if (QFileInfo::exists(path)) {
            o.backup = besideName(path);
            QFile old(path);
            if (!old.copy(o.backup)) {
                m_outputs << o;
                return fail(path, old.errorString());
            }
        }
        m_outputs << o;
        if (!m_progress || m_progress(static_cast<int>(m_outputs.size()), total()))
            return true;
        m_error = "The import was stopped.";
        return false;
    }

    int total() const { return static_cast<int>(m_plan.sets.size() + m_plan.pictures.size()) + 2; }

    bool stageSets()
    {
        QHash<QString, QString> pictures; // package name -> this store's name
        for (const Picture &p : m_plan.pictures) pictures.insert(p.name, p.target);
        QList<HotKeySet> groups;
        for (const PackageSet &set : m_plan.sets) groups << set.groups;
        for (const ItemKey &key : m_plan.items) {
            HotKeyButton &b = groups[key.set][key.group].Buttons[key.key];
            b.Item = key.newItem;
            b.IdSelect = key.newIdSelect;
        }
        for (int s = 0; s < m_plan.sets.size(); ++s) {
            for (int g = 1; g <= 4; ++g) {
                for (int k = 1; k <= 8; ++k) {
                    HotKeyButton &b = groups[s][g].Buttons[k];
                    if (!b.LinkSet.isEmpty())
                        b.LinkSet = targetLink(m_plan, b.LinkSet);
                    b.Icon = pictures.value(conv::Trim(b.Icon), b.Icon);
                }
            }
            const QStringList lines = hotKeySetLines(groups[s], m_plan.sets[s].title);
            if (!stage(hotKeySetPath(m_plan.sets[s].target), &lines, {}))
                return false;
        }
        return true;
    }

    bool stagePictures()
    {
        for (const Picture &p : m_plan.pictures) {
            if (p.state == Picture::Same)
                continue;
            QByteArray bytes;
            QString why;
            if (!m_zip.read(p.entry, kMaxPicture, bytes, &why))
                return fail(m_plan.file, "picture " + p.name + ": " + why);
            if (!stage(gsHotKeyPicturePath + p.target, nullptr, bytes))
                return false;
        }
        return true;
    }

    bool stageKeyFiles()
    {
        for (const auto &[wanted, name] :
             {std::pair{m_plan.special && m_plan.hasSpecial, kSpecialFile},
              {m_plan.coupon && m_plan.hasCoupon, kCouponFile}}) {
            if (!wanted)
                continue;
            const int index = entryIndex(name);
            QByteArray bytes;
            QString why;
            if (index < 0 || !m_zip.read(index, kMaxSetFile, bytes, &why))
                return fail(m_plan.file, QString(name) + ": " + why);
            if (!stage(gDataPath.DataPath() + '/' + name, nullptr, bytes))
                return false;
        }
        return true;
    }

    int entryIndex(const QString &name) const
    {
        for (int i = 0; i < m_zip.entries().size(); ++i) {
            if (m_zip.entries()[i].name == name)
                return i;
        }
        return -1;
    }

    bool keepVersions()
    {
        for (const Output &o : m_outputs) {
            QString why;
            if (!o.backup.isEmpty() && !versions::keep(o.path, &why))
                return fail(o.path, "no version of it could be kept: " + why);
        }
        return true;
    }

    // Each rename replaces one file whole; a failure puts back the files placed before it.
    bool place()
    {
        for (Output &o : m_outputs) {
            std::error_code code;
            std::filesystem::rename(fsPath(o.staged), fsPath(o.path), code);
            if (code) {
                putBack();
                return fail(o.path, platform::fileErrorText(code.value()));
            }
            o.placed = true;
            o.staged.clear();
        }
        return true;
    }

    void putBack()
    {
        for (Output &o : m_outputs) {
            if (!o.placed)
                continue;
            std::error_code code;
            if (o.backup.isEmpty())
                QFile::remove(o.path);
            else
                std::filesystem::rename(fsPath(o.backup), fsPath(o.path), code);
            if (code) // the old bytes stay beside it, and in the versions
                o.backup.clear();
        }
    }

    const Plan &m_plan;
    const Progress &m_progress;
    ziparchive::Reader m_zip;
    QList<Output> m_outputs;
    QString m_error;
};

} // namespace

bool writePlan(const Plan &plan, QString *error, const Progress &progress)
{
    const QString problem = checkTargets(plan);
    if (!problem.isEmpty()) {
        *error = problem;
        return false;
    }
    return PlanWriter(plan, progress).run(error);
}

} // namespace setpackage
