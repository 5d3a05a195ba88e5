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

QString ProgramTest::dataPath() const
{
    return temp.filePath("data");
}

QByteArray ProgramTest::readDataFile(const QString &name) const
{
    QFile f(QDir(dataPath()).filePath(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void ProgramTest::expectWhollyOnScreen(QWidget *form)
{
    const QRect place = Robot::placeOf(form);
    const QRect screen = form->screen()->geometry();
    EXPECT_TRUE(screen.contains(place))
        << form->metaObject()->className() << " lies at " << place.x() << ',' << place.y() << ' '
        << place.width() << " x " << place.height() << " on a screen of " << screen.width() << " x "
        << screen.height();
}

namespace {

// The numbers of an X property as xprop prints them: "NAME(CARDINAL) = 0, 0, 1280, 1024".
QList<int> cardinals(const QStringList &xpropArgs)
{
    const QString out = Robot::run("xprop", xpropArgs);
    QList<int> values;
    for (const QString &v : out.section('=', 1).split(',', Qt::SkipEmptyParts))
        values << v.trimmed().toInt();
    return values;
}

} // namespace

void ProgramTest::expectMaximized(QWidget *form)
{
    const QList<int> area = cardinals({"-root", "_NET_WORKAREA"});
    const QList<int> frame =
        cardinals({"-id", QString::number(form->winId()), "_NET_FRAME_EXTENTS"});
    ASSERT_GE(area.size(), 4);
    ASSERT_EQ(frame.size(), 4); // left, right, top, bottom
    const QRect place = Robot::placeOf(form);
    const QRect framed = place.adjusted(-frame[0], -frame[2], frame[1], frame[3]);
    EXPECT_TRUE(framed == QRect(area[0], area[1], area[2], area[3]))
        << form->metaObject()->className() << " lies at " << place.x() << ',' << place.y() << ' '
        << place.width() << " x " << place.height() << " in a work area of " << area[2] << " x "
        << area[3];
}

QStringList ProgramTest::openedUrls() const
{
    QFile f(temp.filePath("urls.txt"));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll()).split('\n', Qt::SkipEmptyParts);
}

} // namespace display
