// SPDX-License-Identifier: BSD-3-Clause
#include "content/databaseschema.h"
#include "content/dbmanager.h"
#include "librarydatabase.h"
#include "messagelog.h"
#include "scratchdatabase.h"

#include <QSqlQuery>
#include <QTest>

namespace {

ScratchDatabase::Rows rows(const QString& statement)
{
    return rowsOf(*DbManager::instance(), statement);
}

bool exec(const QString& statement)
{
    QSqlQuery query(*DbManager::instance());
    return query.exec(statement);
}

/// While it lives, every write through the daemon's connection fails.
class WriteProtection
{
public:
    WriteProtection() { exec(QStringLiteral("PRAGMA query_only = 1")); }
    ~WriteProtection() { exec(QStringLiteral("PRAGMA query_only = 0")); }
    Q_DISABLE_COPY_MOVE(WriteProtection)
};

QString writeProtectionError()
{
    return QStringLiteral("QSqlError(\"8\", \"Unable to fetch row\", "
                          "\"attempt to write a readonly database\")");
}

} // namespace

/// Tests the daemon's connection when it is open. Other tests cover how it is opened.
class DbManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOne()
    {
        DbManager* const first = DbManager::instance();

        QCOMPARE(DbManager::instance(), first);
        QCOMPARE(first->databaseName(), LibraryDatabase::standardPath());
        QVERIFY(first->isOpen());
    }

    void isTheFirstConnectionOfTheProcess() { QCOMPARE(DbManager::instance()->threadId, 0); }

    void connectionIsTuned_data()
    {
        QTest::addColumn<QString>("pragma");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("temporary tables live in memory")
            << QStringLiteral("PRAGMA temp_store") << QVariant(2);
        QTest::newRow("readers are not held up")
            << QStringLiteral("PRAGMA journal_mode") << QVariant(QStringLiteral("wal"));
        QTest::newRow("triggers do not recur")
            << QStringLiteral("PRAGMA recursive_triggers") << QVariant(0);
    }

    void connectionIsTuned()
    {
        QFETCH(QString, pragma);
        QFETCH(QVariant, value);

        QCOMPARE(rows(pragma), ScratchDatabase::Rows({{value}}));
    }

    void deletedDirectoryLeavesItsGrandchildrenBehind()
    {
        QVERIFY(exec(QStringLiteral(
            "INSERT INTO directory (id, parentId, path, scope) VALUES (1, NULL, '/a', 0), "
            "(2, 1, '/a/b', 0), (3, 2, '/a/b/c', 0)")));
        QVERIFY(exec(QStringLiteral("INSERT INTO file (id, directoryId, fileName, permissions) "
                                    "VALUES (1, 1, 'a', 3), (2, 2, 'b', 3), (3, 3, 'c', 3)")));

        QVERIFY(exec(QStringLiteral("DELETE FROM directory WHERE id = 1")));

        QCOMPARE(
            rows(QStringLiteral("SELECT path FROM directory")),
            ScratchDatabase::Rows({{QStringLiteral("/a/b/c")}}));
        QCOMPARE(
            rows(QStringLiteral("SELECT id FROM file ORDER BY id")),
            ScratchDatabase::Rows({{2}, {3}}));
        QVERIFY(exec(QStringLiteral("DELETE FROM directory")));
        QVERIFY(exec(QStringLiteral("DELETE FROM file")));
    }

    void managerEntryIsNullUntilItIsSet()
    {
        DbManager* const database = DbManager::instance();

        ContentManager*& entry = database->manager(MoodsetContent::Index);

        QVERIFY(!entry);
        QCOMPARE(&database->manager(MoodsetContent::Index), &entry);
    }

    void schemaIsMadeInAnEmptyFile()
    {
        MessageLog log;
        QueryAgentDatabase empty;
        empty.setDatabaseName(QStringLiteral(":memory:"));
        QVERIFY(empty.open());

        QVERIFY(DbManager::instance()->createDatabaseSchema(empty));

        QCOMPARE(log.takeMessages(), QStringList());
        QCOMPARE(
            rowsOf(empty, QStringLiteral("PRAGMA user_version")), ScratchDatabase::Rows({{10}}));
        QCOMPARE(
            rowsOf(
                empty,
                QStringLiteral("SELECT count(*) FROM sqlite_master WHERE sql NOT NULL "
                               "AND name <> 'sqlite_sequence'")),
            ScratchDatabase::Rows({{13}}));
    }

    void failedSchemaStatementDoesNotStopTheNext()
    {
        MessageLog log;
        QueryAgentDatabase database;
        database.setDatabaseName(QStringLiteral(":memory:"));
        QVERIFY(database.open());
        QSqlQuery query(database);
        QVERIFY(query.exec(QStringLiteral("CREATE TABLE image (fileId INTEGER)")));

        QVERIFY(!DbManager::instance()->createDatabaseSchema(database));

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("bool DbManager::createDatabaseSchema(const QSqlDatabase&)"),
                 QStringLiteral("Initialization failed"), DatabaseSchema::statements().at(3),
                 QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                "\"table image already exists\")")}));
        QCOMPARE(
            rowsOf(
                database,
                QStringLiteral("SELECT count(*) FROM sqlite_master WHERE sql NOT NULL "
                               "AND name <> 'sqlite_sequence'")),
            ScratchDatabase::Rows({{13}}));
    }

    void versionIsWritten_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<int>("written");
        QTest::newRow("given") << QStringLiteral("8") << 8;
        QTest::newRow("current if none is given") << QString() << 10;
    }

    void versionIsWritten()
    {
        QFETCH(QString, version);
        QFETCH(int, written);
        QVERIFY(exec(QStringLiteral("PRAGMA user_version = 1")));
        MessageLog log;

        QVERIFY(DbManager::instance()->updateSchemaVersion(version));

        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral("bool DbManager::updateSchemaVersion(const QString&) "
                                        "Updated moodset database to version:  \"%1\"")
                             .arg(written)}));
        QCOMPARE(rows(QStringLiteral("PRAGMA user_version")), ScratchDatabase::Rows({{written}}));
    }

    void failureToWriteTheVersionIsReported()
    {
        MessageLog log;
        const WriteProtection protection;

        QVERIFY(!DbManager::instance()->updateSchemaVersion(QStringLiteral("8")));

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("bool DbManager::updateSchemaVersion(const QString&)"),
                 QStringLiteral("Failed to update version!"),
                 QStringLiteral("\"PRAGMA user_version=8;\""), writeProtectionError()}));
    }

    void moodsetsAloneAreReset()
    {
        MessageLog log;
        QVERIFY(exec(QStringLiteral(
            "INSERT INTO file (id, directoryId, mimeType, fileName, permissions, metadataCurrent) "
            "VALUES (1, 1, 'application/x-zavro-moodset', 'a', 1, 1), "
            "(2, 1, 'application/x-zavro-index', 'b', 1, 1), (3, 1, 'image/png', 'c', 3, 1)")));

        QVERIFY(DbManager::instance()->resetMoodsetsForReparsing());

        QCOMPARE(log.takeMessages(), QStringList());
        QCOMPARE(
            rows(QStringLiteral("SELECT id, metadataCurrent FROM file ORDER BY id")),
            ScratchDatabase::Rows({{1, 0}, {2, 1}, {3, 1}}));
        QVERIFY(exec(QStringLiteral("DELETE FROM file")));
    }

    void failureToResetMoodsetsIsReported()
    {
        MessageLog log;
        const WriteProtection protection;

        QVERIFY(!DbManager::instance()->resetMoodsetsForReparsing());

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("bool DbManager::resetMoodsetsForReparsing()"),
                 QStringLiteral("Failed to reset moodsets for reparsing!"),
                 QStringLiteral("\"UPDATE file SET metadataCurrent = 0 WHERE "
                                "mimeType=\\\"application/x-zavro-moodset\\\";\""),
                 writeProtectionError()}));
    }
};

QTEST_GUILESS_MAIN(DbManagerTest)

#include "tst_dbmanager.moc"
