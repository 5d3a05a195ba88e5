#include "display/ProgramTest.h"
#include "database/ZelDBSM_MSDE.h"
#include "hotkeys/hkeyVersions.h"
#include "platform/AppInfo.h"
#include "platform/Instance.h"
#include "shell/hkeyMain.h"
#include "support/DemoSeed.h"
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QSettings>
#include <QUuid>

namespace display {

void ProgramTest::SetUp()
{
    ASSERT_TRUE(temp.isValid());
    for (const char *folder : {"settings", "drive-c", "app"}) QDir(temp.path()).mkpath(folder);
    qputenv("HOTKEYS_DRIVE_C", temp.filePath("drive-c").toLocal8Bit());
    qputenv("HK_DISPLAY_URLS", temp.filePath("urls.txt").toLocal8Bit());
    const QString seeded =
        testing_support::seedDemoStore(dataPath(), temp.filePath("settings"), 300);
    ASSERT_TRUE(seeded.isEmpty()) << seeded.toStdString();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, temp.filePath("settings"));
    platform::setApplicationFolder(temp.filePath("app"));
    versions::setRoot(temp.filePath("versions"));
    platform::Instance::setKey("display-" + QUuid::createUuid().toString(QUuid::Id128));
    platform::ShellPort::install(&shell);
}

void ProgramTest::TearDown()
{
    robot.stop();
    for (const QString &f : robot.failures) ADD_FAILURE() << f.toStdString();
    platform::ShellPort::install(nullptr);
    gpDBSM_Disconnect();
    platform::setApplicationFolder(QString());
    versions::setRoot(QString());
}

int ProgramTest::runProgram()
{
    robot.start();
    int code = -1;
    try {
        Main();
        ADD_FAILURE() << "the program returned instead of ending";
    } catch (const ProgramEnd &end) {
        code = end.code;
    }
    robot.stop();
    return code;
}

QByteArray ProgramTest::readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void ProgramTest::expectWhollyOnScreen(QWidget *form)
{
    const QRect place = Robot::placeOf(form);
    EXPECT_TRUE(form->screen()->geometry().contains(place))
        << form->metaObject()->className() << " lies at " << place;
}

namespace {

// The numbers of an X property as xprop prints them: "NAME(CARDINAL) = 0, 0, 1280, 1024".
QList<int> cardinals(const QStringList &xpropArgs)
{
    QList<int> values;
    for (const QString &v : Robot::run("xprop", xpropArgs).section('=', 1).split(','))
        values << v.trimmed().toInt();
    return values;
}

} // namespace

void ProgramTest::expectMaximized(QWidget *form)
{
    const QList<int> area = cardinals({"-root", "_NET_WORKAREA"});
    const QList<int> f = cardinals({"-id", QString::number(form->winId()), "_NET_FRAME_EXTENTS"});
    ASSERT_EQ(f.size(), 4); // left, right, top, bottom
    EXPECT_EQ(Robot::placeOf(form).adjusted(-f[0], -f[2], f[1], f[3]),
              QRect(area.value(0), area.value(1), area.value(2), area.value(3)))
        << form->metaObject()->className() << " with its frame";
}

QStringList ProgramTest::openedUrls() const
{
    return QString::fromUtf8(readFile(temp.filePath("urls.txt"))).split('\n', Qt::SkipEmptyParts);
}

} // namespace display
