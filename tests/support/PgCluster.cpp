#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <memory>
#include <unistd.h>

namespace testing_support {

namespace {

// Runs a server program, as the "postgres" user when we are root.
bool runServerProgram(const QString &program, const QStringList &arguments, QString *error)
{
    const QString path = "/usr/lib/postgresql/15/bin/" + program;
    const bool root = ::geteuid() == 0;
    QProcess p;
    p.start(root ? "runuser" : path,
            root ? QStringList{"-u", "postgres", "--", path} + arguments : arguments);
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

struct Shared {
    std::unique_ptr<QTemporaryDir> own; // the folder of a cluster this process started
    std::unique_ptr<PgCluster> cluster;
    QString error;
    bool tried = false;
} shared;

} // namespace

bool PgCluster::pgCtl(const QStringList &arguments, QString *error) const
{
    return runServerProgram(
        "pg_ctl", QStringList{"-D", m_folder + "/data", "-w", "-t", "30"} + arguments, error);
}

bool PgCluster::start(const QString &folder, QString *error)
{
    m_folder = QDir(folder).absolutePath();
    *error = "cannot write the cluster's folder " + m_folder;
    if (!QDir().mkpath(m_folder) || !writeFile(m_folder + "/pwfile", (kPassword + '\n').toUtf8()))
        return false;
    // The server's user must reach the folder through a private parent, as a
    // temporary folder is.
    const QString parent = QFileInfo(m_folder).absolutePath();
    if (::geteuid() == 0 &&
        (!QFile::setPermissions(parent, QFile::permissions(parent) | QFile::ExeOther) ||
         QProcess::execute("chown", {"-R", "postgres", m_folder}) != 0))
        return false;
    QTcpServer probe; // a free loopback port
    m_port = probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
    probe.close();
    return runServerProgram("initdb",
                            {"-D", m_folder + "/data", "-U", kUser,
                             "--pwfile=" + m_folder + "/pwfile", "--auth-local=trust",
                             "--auth-host=scram-sha-256", "--locale=C.UTF-8", "-E", "UTF8", "-N"},
                            error) &&
           restart(error) && writeFile(m_folder + "/port", QByteArray::number(m_port));
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

bool PgCluster::attach(const QString &folder)
{
    QFile f(folder + "/port");
    if (!f.open(QIODevice::ReadOnly))
        return false;
    m_folder = folder;
    m_port = f.readAll().trimmed().toInt();
    return pgCtl({"status"}, nullptr);
}

PgCluster *sharedPgCluster(QString *error)
{
    if (!shared.tried) {
        shared.tried = true;
        shared.cluster = std::make_unique<PgCluster>();
        const QString given = qEnvironmentVariable("HK_PG_CLUSTER");
        if (!shared.cluster->attach(
                given.isEmpty() ? QCoreApplication::applicationDirPath() + "/pg-cluster" : given)) {
            shared.own = std::make_unique<QTemporaryDir>(QDir::temp().filePath("hk-pg-XXXXXX"));
            shared.error = "cannot make a temporary folder";
            if (!shared.own->isValid() ||
                !shared.cluster->start(shared.own->filePath("cluster"), &shared.error))
                shared.cluster.reset();
        }
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
