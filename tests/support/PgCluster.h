#pragma once
#include <QStringList>

namespace testing_support {

// A throwaway PostgreSQL 15 cluster in a folder of its own, on a free loopback
// port, with one superuser that logs in with a password. initdb refuses root:
// as root the server runs as the "postgres" user.
class PgCluster {
public:
    static inline const QString kUser = "hk";
    static inline const QString kPassword = "hk pass'word";

    // Makes and starts the cluster in `folder`, which must not exist yet.
    bool start(const QString &folder, QString *error);
    // Stops it (fast: the clients' connections end) and leaves the folder.
    bool stop() { return pgCtl({"-m", "fast", "stop"}, nullptr); }
    // Starts it again on the same port after stop().
    bool restart(QString *error);
    // A cluster that `start` of another process left in `folder`; false when none runs there.
    bool attach(const QString &folder);

    QString folder() const { return m_folder; }
    // "Server" as the settings store keeps it.
    QString server() const { return "127.0.0.1:" + QString::number(m_port); }

private:
    bool pgCtl(const QStringList &arguments, QString *error) const;
    QString m_folder;
    int m_port = 0;
};

// The cluster of this test run: the one that the test driver started before
// the tests (in HK_PG_CLUSTER, or pg-cluster beside the program), or else one of this process, made
// on first use and stopped by stopOwnPgCluster(). Null with `error` set when
// no cluster can run.
PgCluster *sharedPgCluster(QString *error);
void stopOwnPgCluster();

} // namespace testing_support
