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
#include <QSet>
#include <filesystem>
#include <utility>

namespace setpackage {

namespace {

using namespace detail;

std::filesystem::path fsPath(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

// New bytes held before they are written out: pictures can be large.
constexpr qint64 kStagedAtOnce = 32 * 1024 * 1024;

// One file of the import: its new bytes wait in a temporary file beside it, and
// a copy of the file it replaces under `backup`.
struct Output {
    QString path;
    QByteArray bytes;
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
            !stageKeyFiles() || !writeStaged() || !keepVersions() || !place()) {
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

    bool stage(const QString &path, const QByteArray &bytes)
    {
        m_outputs << Output{path, bytes, QString(), QString()};
        m_waiting += bytes.size();
        if (m_waiting > kStagedAtOnce && !writeStaged())
            return false;
        if (!m_progress || m_progress(static_cast<int>(m_outputs.size()), total()))
            return true;
        m_error = "The import was stopped.";
        return false;
    }

    // The new bytes of the files staged since the last call reach the disk, many
    // files at once, and a copy is made of each file they will replace, to put it
    // back should a later step fail. No file of the data folder is touched yet.
    bool writeStaged()
    {
        QList<platform::Replacement> files;
        for (qsizetype i = m_written; i < m_outputs.size(); ++i)
            files << platform::Replacement{
                m_outputs[i].path, std::exchange(m_outputs[i].bytes, {}), false, {}};
        QStringList staged;
        const bool written = platform::stageFiles(files, staged);
        const qsizetype first = std::exchange(m_written, m_outputs.size());
        m_waiting = 0;
        for (qsizetype i = 0; i < files.size(); ++i) {
            m_outputs[first + i].staged = staged.value(i);
            if (!written && !files[i].reason.isEmpty())
                return fail(files[i].path, files[i].reason);
        }
        for (qsizetype i = first; i < m_outputs.size(); ++i) {
            Output &o = m_outputs[i];
            if (!QFileInfo::exists(o.path))
                continue;
            o.backup = besideName(o.path);
            QFile old(o.path);
            if (!old.copy(o.backup))
                return fail(o.path, old.errorString());
        }
        return true;
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
            if (!stage(hotKeySetPath(m_plan.sets[s].target),
                       textfile::linesBytes(hotKeySetLines(groups[s], m_plan.sets[s].title))))
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
            if (!stage(gsHotKeyPicturePath + p.target, bytes))
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
            if (!stage(gDataPath.DataPath() + '/' + name, bytes))
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
        QSet<QString> folders;
        for (Output &o : m_outputs) {
            std::error_code code;
            std::filesystem::rename(fsPath(o.staged), fsPath(o.path), code);
            if (code) {
                putBack();
                return fail(o.path, platform::fileErrorText(code.value()));
            }
            o.placed = true;
            o.staged.clear();
            folders.insert(QFileInfo(o.path).absolutePath());
        }
        for (const QString &folder : folders) platform::syncFolder(folder);
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
    qsizetype m_written = 0; // outputs before it are on the disk
    qint64 m_waiting = 0;    // bytes of the outputs after it
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
