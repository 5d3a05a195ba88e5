#pragma once
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <gtest/gtest.h>

namespace testing_support {

// The COMMON rows of an embedded database file as another program would read them:
// "number|name|multistore".
inline QStringList commonRowsOf(const QString &file)
{
    const QString connection = "common-rows-check";
    QStringList rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", connection);
        db.setDatabaseName(file);
        EXPECT_TRUE(db.open());
        QSqlQuery q("SELECT StoreNumber, Cname, MultiStore FROM COMMON", db);
        while (q.next())
            rows << QString("%1|%2|%3")
                        .arg(q.value(0).toString(), q.value(1).toString().trimmed(),
                             q.value(2).toString());
    }
    QSqlDatabase::removeDatabase(connection);
    return rows;
}

} // namespace testing_support
