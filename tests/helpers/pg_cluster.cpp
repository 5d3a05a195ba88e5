// The PostgreSQL cluster of one test run, started before the tests and stopped after them.
//   hk_pg_cluster start FOLDER   a new cluster in FOLDER (a leftover one there is removed)
//   hk_pg_cluster stop FOLDER
#include "support/PgCluster.h"
#include <QCoreApplication>
#include <QDir>
#include <cstdio>

using testing_support::PgCluster;

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3 || (args[1] != "start" && args[1] != "stop")) {
        std::fprintf(stderr, "usage: hk_pg_cluster start|stop FOLDER\n");
        return 2;
    }
    const QString folder = QDir(args[2]).absolutePath();
    PgCluster cluster;
    if (QDir(folder).exists()) {
        cluster.attach(folder);
        cluster.stop();
        QDir(folder).removeRecursively();
    }
    if (args[1] == "stop")
        return 0;
    QString error;
    if (cluster.start(folder, &error)) {
        std::printf("PostgreSQL on %s in %s\n", qPrintable(cluster.server()), qPrintable(folder));
        return 0;
    }
    std::fprintf(stderr, "%s\n", qPrintable(error));
    // Outside CI the tests then start a cluster of their own, or skip.
    return qEnvironmentVariableIsEmpty("CI") ? 0 : 1;
}
