#include "hotkeys/hkeyGlobal.h"
#include "hotkeys/hkeyServices.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/FileReplace.h"
#include "settings/clsDataPath.h"
#include "support/HkTest.h"
#include "support/SaveScenarios.h"
#include <QDir>
#include <QProcess>
#include <cerrno>
#ifdef HK_SAVE_HELPER
#include <sys/mount.h>
#include <unistd.h>
#endif

using namespace testing_support;

namespace {

// The file each save of saveOnce writes.
const std::pair<const char *, const char *> kSaves[] = {
    {"set", "HKSET07.SDF"},
    {"special", "SPECIAL.BDF"},
    {"coupon", "COUPON.BDF"},
    {"remove", "HKSET08.SDF"},
};

struct Outcome {
    bool saved = false;
    QString said;
};

class SaveTest : public HkTest {
protected:
    // The bytes of a set version as a save writes them.
    static QByteArray versionBytes(int version) { return hotKeySetBytes(fillSetVersion(version)); }
    Outcome saveHere(const QString &what)
    {
        QStringList said;
        const bool saved = saveOnce(what, dialogs, &said);
        return {saved, said.join('\n')};
    }
#ifdef HK_SAVE_HELPER
    // The save made by a second process whose files may grow to `limit` bytes only.
    static Outcome saveWithSizeLimit(const QString &what, const QString &folder, int limit)
    {
        QProcess station;
        station.start(HK_SAVE_HELPER, {"once", folder, what, QString::number(limit)});
        if (!station.waitForFinished(60000) || station.exitStatus() != QProcess::NormalExit ||
            station.exitCode() > 1) {
            ADD_FAILURE() << "the helper failed: " << station.readAllStandardError().toStdString();
            return {};
        }
        return {station.exitCode() == 0, QString::fromLocal8Bit(station.readAllStandardOutput())};
    }
#endif
};

} // namespace

TEST_F(SaveTest, EachSaveReplacesTheWholeFileAndKeyFilesNeverHoldALineBreakInsideALine)
{
    writeOldFiles(dataPath());
    for (const auto &[what, name] : kSaves) {
        const Outcome o = saveHere(what);
        EXPECT_TRUE(o.saved) << what << ": " << o.said.toStdString();
    }
    EXPECT_EQ(QDir(dataPath()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"COUPON.BDF", "HKSET08.SDF", "SPECIAL.BDF"}));
    EXPECT_EQ(readDataFile("HKSET08.SDF"),
              "[SET]Eight\r\n[GROUP]1[CAPTION]Col[COLOR]RED\r\n"
              "[BUTTON]2[CAPTION]Milk[ITEM]0000102.0[ICON][IDSELECT]No[LINKSET][ROOT]\r\n");

    // A coupon key read from a special key line holds label, carriage return, character.
    writeDataFile("COUPON.BDF", "[BUTTON]1[CAPTION]Void[KEY]*\r\n"
                                "[BUTTON]2[CAPTION]Off[KEY]~SCOUPN[VALUE].50\r\n");
    gbCouponKeys = true;
    SpecialKey keys[3] = {{0, "", ""}, {1, "", ""}, {2, "", ""}};
    for (SpecialKey &key : keys) gpSpecialKey_read(key);
    gbCouponKeys = false;
    ASSERT_TRUE(gpCouponKeys_write(keys[0], keys[1], keys[2]));
    EXPECT_EQ(readDataFile("COUPON.BDF"), "[BUTTON]1[CAPTION]Void[KEY]~SCOUPN[VALUE]\r\n"
                                          "[BUTTON]2[CAPTION]Off[KEY]~SCOUPN[VALUE].50\r\n");
    ASSERT_TRUE(gpSpecialKeys_write("A\rB\rC", "Two\nlines\r/", ""));
    EXPECT_EQ(readDataFile("SPECIAL.BDF"), "[BUTTON]1[CAPTION]A[KEY]B C\r\n"
                                           "[BUTTON]2[CAPTION]Two lines[KEY]/\r\n");
}

#ifdef HK_SAVE_HELPER

TEST(FileErrorText, SaysWhatFailedInTheUsersWords)
{
    EXPECT_TRUE(platform::fileErrorText(ENOSPC).startsWith("Disk full:"));
    EXPECT_TRUE(platform::fileErrorText(EDQUOT).startsWith("Disk full:"));
    EXPECT_TRUE(platform::fileErrorText(EROFS).startsWith("Read-only:"));
    EXPECT_TRUE(platform::fileErrorText(EACCES).startsWith("Permission denied:"));
    EXPECT_EQ(platform::fileErrorText(EMLINK), QString("Too many links (error %1).").arg(EMLINK));
    EXPECT_EQ(platform::fileErrorText(987654), "Error 987654 of the operating system.");
}

TEST_F(SaveTest, AReaderDuringAThousandSavesSeesOnlyWholeFilesAndAlwaysTheSet)
{
    const QByteArray versions[] = {versionBytes(0), versionBytes(1)};
    writeDataFile("HKSET07.SDF", versions[1]);
    QProcess station;
    station.start(HK_SAVE_HELPER, {"loop", dataPath(), "1000"});
    ASSERT_TRUE(station.waitForStarted());
    // A file missing or part of one is neither version; a wrong listing is wrong too.
    int seen[2] = {0, 0}, wrong = 0;
    while (station.state() != QProcess::NotRunning) {
        const QByteArray bytes = readDataFile("HKSET07.SDF");
        if (bytes == versions[0] || bytes == versions[1])
            ++seen[bytes == versions[1]];
        else
            ++wrong;
        wrong += hotKeySetFiles() != QStringList{"HKSET07.SDF"};
        station.waitForFinished(0);
    }
    EXPECT_TRUE(station.exitStatus() == QProcess::NormalExit && station.exitCode() == 0)
        << station.readAllStandardError().toStdString();
    EXPECT_EQ(wrong, 0);
    EXPECT_TRUE(seen[0] > 0 && seen[1] > 0); // the reads overlapped the saves
    EXPECT_EQ(readDataFile("HKSET07.SDF"), versions[1]);
}

TEST_F(SaveTest, ASaveKilledAtAnyMomentLeavesWholeFilesAndTheNextSaveTakesItsTemporaryFile)
{
    const QList<QByteArray> whole = {versionBytes(0), versionBytes(1)};
    writeDataFile("HKSET07.SDF", whole[1]);
    QProcess stations;
    stations.start(HK_SAVE_HELPER, {"killed", dataPath(), "250"});
    ASSERT_TRUE(stations.waitForFinished(120000));
    ASSERT_EQ(stations.exitCode(), 0) << stations.readAllStandardError().toStdString();
    EXPECT_GT(stations.readAllStandardOutput().trimmed().toInt(), 0)
        << "no kill fell inside a save";

    EXPECT_EQ(hotKeySetFiles(), QStringList{"HKSET07.SDF"});
    EXPECT_TRUE(whole.contains(readDataFile("HKSET07.SDF")));
    versions::setRoot(dataPath() + "-versions"); // where the stations kept theirs
    const QList<versions::Version> kept = versions::list("HKSET07.SDF");
    EXPECT_FALSE(kept.isEmpty());
    for (const versions::Version &version : kept)
        EXPECT_TRUE(version.time.isValid() && whole.contains(versions::bytesOf(version)))
            << version.path.toStdString();

    ASSERT_TRUE(gpHotKeySet_write("07", fillSetVersion(0)));
    EXPECT_EQ(QDir(dataPath()).entryList(QDir::Files | QDir::Hidden), QStringList{"HKSET07.SDF"});
    EXPECT_EQ(QDir(versions::dataFolderVersions() + "/HKSET07.SDF")
                  .entryList({"~hk-*"}, QDir::Files | QDir::Hidden),
              QStringList());
}

TEST_F(SaveTest, ASaveTakesOnlyTheTemporaryFilesOfItsFileThatNoSaveInProgressCanOwn)
{
    const qint64 endedPid = 4194305, runningPid = ::getppid(); // the first above any Linux gives
    // The name a save of `file` at `computer` by process `pid` leaves.
    const auto leftBy = [](const QString &folder, const QString &file, const QString &computer,
                           qint64 pid) {
        return QString("%1/~hk-%2-%3-%4-0000beef.tmp").arg(folder, file, computer).arg(pid);
    };
    const QString here = platform::temporaryNameFor("x").split('-')[2];
    writeDataFile("HKSET07.SDF", "[SET]Before\r\n");
    const QString data = dataPath();
    const QString kept = versions::dataFolderVersions() + "/HKSET07.SDF";
    QDir().mkpath(kept);
    const QString earlier = data + "/~hk-HKSET07-" + QString::number(endedPid);
    const struct {
        QString path;
        bool old, taken;
    } temporaries[] = {
        {leftBy(data, "HKSET07", here, endedPid), false, true},
        {leftBy(data, "HKSET07", here, runningPid), false, false},
        {leftBy(data, "HKSET07", "0badc0de", endedPid), false, false}, // maybe in progress
        {leftBy(data, "HKSET07", "0badc0de", runningPid), true, true}, // older than any save
        {earlier + "-0000abcd.tmp", false, false}, // an earlier version's name: from anywhere
        {earlier + "-0000abce.tmp", true, true},
        {leftBy(data, "HKSET08", here, endedPid), true, false}, // another file's
        {leftBy(kept, "20261124T101500000Z", here, endedPid), false, true},
        {leftBy(kept, "20261124T101500000Z", here, runningPid), false, false}, // no version
    };
    for (const auto &t : temporaries) {
        QFile f(t.path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[SET]Half");
        f.flush();
        if (t.old)
            f.setFileTime(QDateTime::currentDateTime().addSecs(-7200),
                          QFileDevice::FileModificationTime);
    }

    ASSERT_TRUE(gpHotKeySet_write("07", fillSetVersion(1)));
    for (const auto &t : temporaries)
        EXPECT_NE(QFile::exists(t.path), t.taken) << t.path.toStdString();
    // A station's listing, which may match short 8.3 names too, takes none of those left.
    EXPECT_EQ(QDir(data).entryList({"HKSET*.SDF", "*.BDF"}, QDir::Files),
              QStringList{"HKSET07.SDF"});
    ASSERT_EQ(versions::list("HKSET07.SDF").size(), 1);
    EXPECT_EQ(versions::bytesOf(versions::list("HKSET07.SDF").first()), "[SET]Before\r\n");
}

namespace {

// A tmpfs of 64 KiB for one test, when the test may mount one.
struct TinyDisk {
    explicit TinyDisk(const QString &folder) : path(QFile::encodeName(folder))
    {
        QDir().mkpath(folder);
        mounted = ::mount("tmpfs", path, "tmpfs", 0, "size=64k") == 0;
    }
    ~TinyDisk()
    {
        if (mounted)
            ::umount2(path, MNT_DETACH);
    }
    const QByteArray path;
    bool mounted = false;
};

} // namespace

TEST_F(SaveTest, AFullDiskACutOffWriteOrAReadOnlyFolderKeepsEveryOldFileAndSaysWhy)
{
    const TinyDisk disk(temp.filePath("disk"));
    const QString folder = disk.mounted ? temp.filePath("disk") : dataPath();
    gDataPath.setDataPath(folder);
    writeOldFiles(folder);
    if (disk.mounted) { // full to the last byte
        QFile filler(folder + "/filler");
        filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        filler.write(QByteArray(64 * 1024, 'x'));
    }
    const auto before = filesUnder(folder);
    for (const auto &[what, name] : kSaves) {
        // Without a tiny disk a limit of 0 bytes stands in: nothing new fits.
        const Outcome o = disk.mounted ? saveHere(what) : saveWithSizeLimit(what, folder, 0);
        EXPECT_FALSE(o.saved) << what;
        EXPECT_TRUE(o.said.contains(name) &&
                    o.said.contains(disk.mounted ? "Disk full:" : "File too large:"))
            << o.said.toStdString();
        EXPECT_EQ(filesUnder(folder), before) << what;
    }
    if (disk.mounted) {
        QFile::remove(folder + "/filler");
        EXPECT_TRUE(saveHere("set").saved) << "with room again the same save goes through";
        EXPECT_EQ(filesUnder(folder)["HKSET07.SDF"], versionBytes(1));
    }

    // A write that fails halfway: 40 bytes are within the first lines of every new file.
    const auto now = filesUnder(folder);
    for (const auto &[what, name] : kSaves) {
        const Outcome o = saveWithSizeLimit(what, folder, 40);
        EXPECT_FALSE(o.saved) << what;
        EXPECT_TRUE(o.said.contains(name) && o.said.contains("File too large:"))
            << o.said.toStdString();
        EXPECT_EQ(filesUnder(folder), now) << what;
    }

    const bool readOnly = disk.mounted && ::mount("tmpfs", disk.path, "tmpfs",
                                                  MS_REMOUNT | MS_RDONLY, "size=64k") == 0;
    if (!readOnly)
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    QFile probe(folder + "/probe");
    const bool canWrite = probe.open(QIODevice::WriteOnly);
    const Outcome o = canWrite ? Outcome{} : saveHere("set");
    probe.remove();
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (canWrite)
        GTEST_SKIP() << "neither a read-only disk nor a folder closed to this user can be had";
    EXPECT_FALSE(o.saved);
    EXPECT_TRUE(o.said.startsWith(QDir::toNativeSeparators(folder + "/HKSET07.SDF") +
                                  "\r\rHot Keys File Could Not Be Saved\r" +
                                  (readOnly ? "Read-only:" : "Permission denied:")))
        << o.said.toStdString();
    EXPECT_TRUE(o.said.endsWith("The file in the data folder was left as it was, and your "
                                "changes are still on the screen."));
    EXPECT_EQ(filesUnder(folder), now);
}

#endif
