#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <memory>
#include <unistd.h>

namespace testing_support {

namespace {

const QString kBin = "/usr/lib/postgresql/15/bin/";

bool asRoot()
{
    return ::geteuid() == 0;
}

// Runs a server program, as the "postgres" user when we are root.
bool runServerProgram(const QString &program, const QStringList &arguments, QString *error)
{
    QProcess p;
    if (asRoot())
        p.start("runuser", QStringList{"-u", "postgres", "--", kBin + program} + arguments);
    else
        p.start(kBin + program, arguments);
    if (p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0)
        return true;
    if (error)
        *error = program + " failed: " + p.errorString() + ' ' +
                 QString::fromLocal8Bit(p.readAllStandardError() + p.readAllStandardOutput());
    return false;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

} // namespace

bool PgCluster::pgCtl(const QStringList &arguments, QString *error) const
{
    return runServerProgram(
        "pg_ctl", QStringList{"-D", m_folder + "/data", "-w", "-t", "30"} + arguments, error);
}

bool PgCluster::start(const QString &folder, QString *error)
{
    m_folder = QDir(folder).absolutePath();
    if (!QDir().mkpath(m_folder) || !writeFile(m_folder + "/pwfile", (kPassword + '\n').toUtf8()))
        return fail(error, "cannot write the cluster's folder " + m_folder);
    // The server's user must reach the folder through a private parent, as a
    // temporary folder is.
    const QString parent = QFileInfo(m_folder).absolutePath();
    if (asRoot())
        QFile::setPermissions(parent, QFile::permissions(parent) | QFile::ExeOther);
    if (asRoot() && QProcess::execute("chown", {"-R", "postgres", m_folder}) != 0)
        return fail(error, "cannot give " + m_folder + " to the postgres user");
    if (!runServerProgram("initdb",
                          {"-D", m_folder + "/data", "-U", kUser,
                           "--pwfile=" + m_folder + "/pwfile", "--auth-local=trust",
                           "--auth-host=scram-sha-256", "--locale=C.UTF-8", "-E", "UTF8", "-N"},
                          error))
        return false;
    QTcpServer probe; // a free loopback port
    m_port = probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
    probe.close();
    if (!restart(error))
        return false;
    writeFile(m_folder + "/port", QByteArray::number(m_port));
    return true;
}

bool PgCluster::restart(QString *error)
{
    return pgCtl({"-l", m_folder + "/server.log", "-o",
                  QString("-c listen_addresses=127.0.0.1 -p %1 -k %2 -c fsync=off "
                          "-c full_page_writes=off -c max_connections=60")
                      .arg(m_port)
                      .arg(m_folder),
                  "start"},
                 error);
}

bool PgCluster::stop()
{
    return pgCtl({"-m", "fast", "stop"}, nullptr);
}

bool PgCluster::attach(const QString &folder)
{
    QFile f(folder + "/port");
    if (!f.open(QIODevice::ReadOnly))
        return false;
    m_folder = folder;
    m_port = f.readAll().trimmed().toInt();
    return pgCtl({"status"}, nullptr);
}

namespace {

struct Shared {
    std::unique_ptr<QTemporaryDir> own; // the folder of a cluster this process started
    std::unique_ptr<PgCluster> cluster;
    QString error;
    bool tried = false;
} shared;

} // namespace

PgCluster *sharedPgCluster(QString *error)
{
    if (!shared.tried) {
        shared.tried = true;
        auto cluster = std::make_unique<PgCluster>();
        QString given = qEnvironmentVariable("HK_PG_CLUSTER");
        if (given.isEmpty())
            given = QCoreApplication::applicationDirPath() + "/pg-cluster";
        bool ready = cluster->attach(given);
        if (!ready) {
            shared.own = std::make_unique<QTemporaryDir>(QDir::temp().filePath("hk-pg-XXXXXX"));
            ready = shared.own->isValid() &&
                    cluster->start(shared.own->filePath("cluster"), &shared.error);
            if (!ready && shared.error.isEmpty())
                shared.error = "cannot make a temporary folder";
        }
        if (ready)
            shared.cluster = std::move(cluster);
    }
    if (!shared.cluster && error)
        *error = shared.error;
    return shared.cluster.get();
}

void stopOwnPgCluster()
{
    if (shared.own && shared.cluster)
        shared.cluster->stop();
    shared.cluster.reset();
    shared.own.reset();
}

} // namespace testing_support
