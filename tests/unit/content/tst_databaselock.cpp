// SPDX-License-Identifier: BSD-3-Clause
#include "databasehome.h"
#include "startlog.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

/// This is a program of its own, because its only test takes twice the time that SQLite waits for a
/// lock.
class DatabaseLockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanupTestCase() { QSqlDatabase::removeDatabase(QStringLiteral("foreign")); }

    void fileThatAnotherProgramHasLockedIsRebuilt()
    {
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-9.sql"));
        QSqlDatabase foreign =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("foreign"));
        foreign.setDatabaseName(home.databasePath());
        QVERIFY(foreign.open());
        QSqlQuery lock(foreign);
        QVERIFY(lock.exec(QStringLiteral("BEGIN EXCLUSIVE")));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::versionUnknown(StartLog::error(
                QStringLiteral("5"), QStringLiteral("Unable to fetch row"),
                QStringLiteral("database is locked")))
                + StartLog::deletion(home.databaseFolder()) + StartLog::fine());
        QCOMPARE(home.version(), 10);
        QCOMPARE(home.rows(QStringLiteral("SELECT * FROM file")), DatabaseHome::Rows());
    }
};

QTEST_GUILESS_MAIN(DatabaseLockTest)

#include "tst_databaselock.moc"
