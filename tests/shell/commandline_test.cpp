#include "hotkeys/hkeyZip.h"
#include "support/DemoSeed.h"
#include "support/HkTest.h"
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Outcome {
    int code = -1;
    QString out, err;
};

// The program itself, as a head office's script starts it: no display at all.
class CommandLineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const QString seeded =
            testing_support::seedDemoStore(temp.filePath("data"), temp.filePath("settings"), 0);
        ASSERT_TRUE(seeded.isEmpty()) << seeded.toStdString();
    }
    Outcome hotkeys(const QStringList &args)
    {
        QProcess program;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(name);
        env.insert("XDG_CONFIG_HOME", temp.filePath("settings"));
        env.insert("HOTKEYS_DRIVE_C", temp.path());
        program.setProcessEnvironment(env);
        program.start(HK_PROGRAM, args);
        if (!program.waitForFinished(60000))
            ADD_FAILURE() << "the program did not end in 60 s";
        return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
                QString::fromLocal8Bit(program.readAllStandardOutput()),
                QString::fromLocal8Bit(program.readAllStandardError())};
    }
    QTemporaryDir temp;
};

} // namespace

TEST_F(CommandLineTest, ExportsTheSetsNamedAndReportsAnImportWithoutWritingOrAWindow)
{
    const QString package = temp.filePath("head office.zip");
    const Outcome exported = hotkeys({"--export-sets", package, "1", "2", "--special"});
    EXPECT_EQ(exported.code, 0) << exported.err.toStdString();
    EXPECT_EQ(exported.out.section(": ", 1), "2 sets, 6 pictures, 8 keys that sell an item.\n");
    ziparchive::Reader zip;
    QString error;
    ASSERT_TRUE(zip.open(package, &error)) << error.toStdString();
    QStringList names;
    for (const ziparchive::Entry &e : zip.entries()) names << e.name;
    names.sort();
    EXPECT_EQ(
        names.filter(QRegularExpression("^(sets/|[A-Z]|manifest)")),
        QStringList({"SPECIAL.BDF", "manifest.json", "sets/HKSET01.SDF", "sets/HKSET02.SDF"}));

    const auto before = testing_support::filesUnder(temp.filePath("data"));
    const Outcome report = hotkeys({"--import-sets", package, "--report"});
    EXPECT_EQ(report.code, 0) << report.err.toStdString();
    EXPECT_TRUE(report.out.startsWith("Package: " + package + "\nMade by store 1 (") &&
                report.out.contains("\n  01 Main Menu: becomes set 13 (01 is taken here)\n") &&
                report.out.endsWith("\n2 sets; item keys found by S/L 8, by Item ID 0, by UPC 0, "
                                    "not found 0.\n"))
        << report.out.toStdString();
    EXPECT_EQ(testing_support::filesUnder(temp.filePath("data")), before)
        << "the report writes nothing";
}

TEST_F(CommandLineTest, AFailureSaysWhyOnTheErrorOutputWithItsExitCode)
{
    QFile notZip(temp.filePath("notes.zip"));
    EXPECT_TRUE(notZip.open(QIODevice::WriteOnly) && notZip.write("just some notes") > 0);
    notZip.close();
    const struct {
        QStringList args;
        int code;
        const char *said;
    } cases[] = {
        {{"--import-sets", notZip.fileName(), "--report"}, 1, "It is not a set package"},
        {{"--export-sets", temp.filePath("p.zip"), "77"}, 1, "HKSET77.SDF"},
        {{"--import-sets", notZip.fileName()}, 2, "usage: hotkeys --export-sets FILE"},
        {{"--export-sets", temp.filePath("p.zip"), "seven"}, 2, "usage:"},
        {{"--export-sets"}, 2, "usage:"},
    };
    for (const auto &c : cases) {
        const Outcome run = hotkeys(c.args);
        EXPECT_EQ(run.code, c.code) << c.args.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(c.said)) << run.err.toStdString();
        EXPECT_TRUE(run.out.isEmpty()) << run.out.toStdString();
    }
    EXPECT_FALSE(QFile::exists(temp.filePath("p.zip")));
}
