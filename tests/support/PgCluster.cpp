#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QProcess>
#include <QSqlDatabase>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QUuid>
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
bool runServerProgram(const QString &program, const QStringList &arguments, QString *error,
                      int timeoutMs = 60000)
{
    QProcess p;
    if (asRoot())
        p.start("runuser", QStringList{"-u", "postgres", "--", kBin + program} + arguments);
    else
        p.start(kBin + program, arguments);
    if (p.waitForFinished(timeoutMs) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0)
        return true;
    if (error)
        *error = program + " failed: " + p.errorString() + ' ' +
                 QString::fromLocal8Bit(p.readAllStandardError() + p.readAllStandardOutput());
    return false;
}

int freeLoopbackPort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
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
    if (!QDir().mkpath(m_folder) || !writeFile(m_folder + "/pwfile", (kPassword + '\n').toUtf8())) {
        if (error)
            *error = "cannot write the cluster's folder " + m_folder;
        return false;
    }
    // The server's user must reach the folder through a private parent, as a
    // temporary folder is.
    const QString parent = QFileInfo(m_folder).absolutePath();
    if (asRoot())
        QFile::setPermissions(parent, QFile::permissions(parent) | QFile::ExeOther);
    if (asRoot() && QProcess::execute("chown", {"-R", "postgres", m_folder}) != 0) {
        if (error)
            *error = "cannot give " + m_folder + " to the postgres user";
        return false;
    }
    if (!runServerProgram("initdb",
                          {"-D", m_folder + "/data", "-U", kUser,
                           "--pwfile=" + m_folder + "/pwfile", "--auth-local=trust",
                           "--auth-host=scram-sha-256", "--locale=C.UTF-8", "-E", "UTF8", "-N"},
                          error))
        return false;
    m_port = freeLoopbackPort();
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
    const QString name = "pgprobe-" + QUuid::createUuid().toString(QUuid::Id128);
    bool up = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QPSQL", name);
        db.setHostName("127.0.0.1");
        db.setPort(m_port);
        db.setUserName(kUser);
        db.setPassword(kPassword);
        db.setDatabaseName("postgres");
        db.setConnectOptions("connect_timeout=5");
        up = db.open();
    }
    QSqlDatabase::removeDatabase(name);
    return up;
}

namespace {

struct Shared {
    std::unique_ptr<QTemporaryDir> own; // the folder of a cluster this process started
    std::unique_ptr<PgCluster> cluster;
    QString error;
    bool tried = false;
};

Shared &shared()
{
    static Shared s;
    return s;
}

} // namespace

PgCluster *sharedPgCluster(QString *error)
{
    Shared &s = shared();
    if (!s.tried) {
        s.tried = true;
        auto cluster = std::make_unique<PgCluster>();
        QString given = qEnvironmentVariable("HK_PG_CLUSTER");
        if (given.isEmpty())
            given = QCoreApplication::applicationDirPath() + "/pg-cluster";
        if (cluster->attach(given)) {
            s.cluster = std::move(cluster);
        } else {
            s.own = std::make_unique<QTemporaryDir>(QDir::temp().filePath("hk-pg-XXXXXX"));
            if (s.own->isValid() && cluster->start(s.own->filePath("cluster"), &s.error))
                s.cluster = std::move(cluster);
            else if (s.error.isEmpty())
                s.error = "cannot make a temporary folder";
        }
    }
    if (!s.cluster && error)
        *error = s.error;
    return s.cluster.get();
}

void stopOwnPgCluster()
{
    Shared &s = shared();
    if (s.own && s.cluster)
        s.cluster->stop();
    s.cluster.reset();
    s.own.reset();
}

} // namespace testing_support
