#pragma once
#include <QProcess>
#include <QString>

namespace testing_support {

// Seeds the demo store into `data` with the demo seeder (HK_DEMO_SEED), its settings
// store in `settings`. Empty when it worked, else what the seeder said.
inline QString seedDemoStore(const QString &data, const QString &settings, int items)
{
    QProcess seeder;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("XDG_CONFIG_HOME", settings);
    env.insert("QT_QPA_PLATFORM", "offscreen");
    seeder.setProcessEnvironment(env);
    seeder.setProcessChannelMode(QProcess::MergedChannels);
    seeder.start(HK_DEMO_SEED, {data, "--items", QString::number(items)});
    if (!seeder.waitForFinished(60000))
        return "the demo seeder did not finish in 60 s";
    if (seeder.exitStatus() != QProcess::NormalExit || seeder.exitCode() != 0)
        return "the demo seeder failed: " + QString::fromLocal8Bit(seeder.readAll());
    return QString();
}

} // namespace testing_support
