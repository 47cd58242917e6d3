// SPDX-License-Identifier: BSD-3-Clause
// Tests the construction of FileManager, its statements and its turns. Directories, files, scans
// and change events have tests of their own.
#include "indexing/filemanager.h"

#include "content/dbmanager.h"
#include "drivenfilemanager.h"
#include "fewdescriptors.h"
#include "indexdatabase.h"
#include "messagelog.h"
#include "testfolder.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

namespace {

const QString Constructor =
    QStringLiteral("FileManager::FileManager(QueryAgentDatabase&, QObject*)");
const QString InsertFile = QStringLiteral("qint64 FileManager::insertFile(const QString&)");
const QString NotAuthorized =
    QStringLiteral("QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")");

} // namespace

class FileManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructingMakesNoOtherManager();
    void constructingLeavesNoTransactionOpen();
    void constructingQueuesAllRootsInTheOrderOfTheirRows();
    void constructingSchedulesAnUpdateWithoutRoots();
    void statementThatCannotBePreparedIsReported_data();
    void statementThatCannotBePreparedIsReported();
    void scopeUpdateThatCannotBePreparedLeavesTheTransactionOpenWithoutAWord();
    void constructingInsideATransactionIsReported();
    void constructingOnAnUnopenedDatabaseIsReported();
    void rootsThatCannotBeReadAreReported();
    void withoutInotifyNothingWorks();
    void updatesAreScheduledOnce();
    void idleIsLoggedWithTheTime();
    void scheduledUpdateReadsMetadataInTurns_data();
    void scheduledUpdateReadsMetadataInTurns();
    void withoutScheduledManagersThereIsNoMetadataToUpdate();
    void otherEventsGoToTheNotifier();
};

void FileManagerTest::constructingMakesNoOtherManager()
{
    MessageLog log;
    IndexDatabase database;

    DrivenFileManager manager(database.connection());

    QVERIFY(!DbManager::instance()->manager(MoodsetContent::Image));
}

void FileManagerTest::constructingLeavesNoTransactionOpen()
{
    MessageLog log;
    IndexDatabase database;

    DrivenFileManager manager(database.connection());

    QVERIFY(!database.isInTransaction());
}

void FileManagerTest::constructingQueuesAllRootsInTheOrderOfTheirRows()
{
    MessageLog log;
    IndexDatabase database;
    database.exec(
        {QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/missing/z', 0);"),
         QStringLiteral("INSERT INTO directory (path, scope, parentId) "
                        "VALUES ('/missing/z/sub', 0, 1);"),
         QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/missing/a', 1);")});

    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    const QStringList expected{
        QStringLiteral("Failed to add listener -1 \"/missing/z\""),
        QStringLiteral("Failed to add listener -1 \"/missing/a\"")};
    QCOMPARE(log.takeWarnings(), expected);
}

void FileManagerTest::constructingSchedulesAnUpdateWithoutRoots()
{
    MessageLog log;
    IndexDatabase database;

    DrivenFileManager manager(database.connection());

    QVERIFY(manager.step());
    QVERIFY(!manager.step());
}

void FileManagerTest::statementThatCannotBePreparedIsReported_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QByteArray>("verb");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QString>("statement");
    const auto addRow = [](const char* member, const QByteArray& verb, int nth,
                           const QByteArray& table, const QByteArray& column,
                           const char* statement) {
        QTest::newRow(member) << QString::fromLatin1(member) << verb << nth << table << column
                              << QString::fromLatin1(statement);
    };
    addRow(
        "m_fileQuery", "SELECT", 1, "", "",
        "SELECT id, fileName, modificationTime FROM file WHERE directoryId = ? "
        "ORDER BY fileName ASC;");
    addRow(
        "m_fileInsert", "INSERT", 1, "file", "",
        "INSERT INTO file (directoryId, mimeType, fileName, modificationTime, permissions, "
        "metadataCurrent) VALUES (?, ?, ?, ?, 3, 0);");
    addRow(
        "m_fileSyncUpdate", "UPDATE", 1, "file", "modificationTime",
        "UPDATE file SET modificationTime = ?, metadataCurrent = 0 WHERE id = ?;");
    addRow("m_fileSyncDelete", "DELETE", 1, "file", "", "DELETE FROM file WHERE id = ?;");
    addRow(
        "m_fileMonitorUpdate", "UPDATE", 2, "file", "modificationTime",
        "UPDATE file SET modificationTime = ?, metadataCurrent = 0 WHERE directoryId = ? "
        "AND fileName = ?;");
    addRow(
        "m_fileMonitorDelete", "DELETE", 2, "file", "",
        "DELETE FROM file WHERE directoryId = ? AND fileName = ?;");
    addRow(
        "m_directoryQuery", "SELECT", 2, "", "",
        "SELECT id, path FROM directory WHERE parentId = ? ORDER BY path ASC;");
    addRow(
        "m_directoryInsert", "INSERT", 1, "directory", "",
        "INSERT INTO directory (parentId, path, scope) VALUES (?, ?, 0);");
    addRow(
        "m_directoryDelete", "DELETE", 1, "directory", "", "DELETE FROM directory WHERE id = ?;");
    addRow(
        "m_directoryIdQuery", "SELECT", 3, "", "",
        "SELECT id, scope FROM directory WHERE path = ?;");
    addRow(
        "m_fileIdQuery", "SELECT", 4, "", "",
        "SELECT id FROM file WHERE directoryId = ? AND fileName = ?;");
    addRow(
        "m_directoryAppend", "INSERT", 2, "directory", "",
        "INSERT INTO directory (path, scope) VALUES(?, ?);");
    addRow(
        "m_directoryParentUpdate", "UPDATE", 1, "directory", "parentId",
        "UPDATE directory SET parentId = ? WHERE id = ?;");
}

void FileManagerTest::statementThatCannotBePreparedIsReported()
{
    QFETCH(QString, member);
    QFETCH(QByteArray, verb);
    QFETCH(int, nth);
    QFETCH(QByteArray, table);
    QFETCH(QByteArray, column);
    QFETCH(QString, statement);
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    database.refuseToPrepare(verb, nth, table, column);

    DrivenFileManager manager(database.connection());

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            Constructor, QStringLiteral("Failed to prepare %1.").arg(member), NotAuthorized,
            statement));
    QVERIFY(!database.isInTransaction());
    QVERIFY(!manager.step());
    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));
}

void FileManagerTest::scopeUpdateThatCannotBePreparedLeavesTheTransactionOpenWithoutAWord()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    database.refuseToPrepare("UPDATE", 1, "directory", "scope");

    DrivenFileManager manager(database.connection());

    QCOMPARE(log.takeMessages(), QStringList());
    QVERIFY(database.isInTransaction());
    QVERIFY(!manager.step());
    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));
}

void FileManagerTest::constructingInsideATransactionIsReported()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    QVERIFY(database.connection().transaction());

    DrivenFileManager manager(database.connection());

    const QStringList expected{
        Constructor, QStringLiteral("Failed to open transation on database"),
        QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                       "\"cannot start a transaction within a transaction\")")};
    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(!manager.step());
    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));
}

void FileManagerTest::constructingOnAnUnopenedDatabaseIsReported()
{
    MessageLog log;
    QueryAgentDatabase database;

    DrivenFileManager manager(database);

    const QStringList expected{
        Constructor, QStringLiteral("Failed to open transation on database"),
        QStringLiteral("QSqlError(\"\", \"\", \"\")")};
    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(!manager.step());
}

void FileManagerTest::rootsThatCannotBeReadAreReported()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    // This is the statement after the four that are prepared.
    database.refuseToPrepare("SELECT", 5);

    DrivenFileManager manager(database.connection());

    const QStringList expected{
        Constructor, QStringLiteral("Failed to execute root path query"), NotAuthorized};
    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(manager.step());
    QVERIFY(manager.appendDirectory(folder.path(), FileManager::AllEntries, true) > 0);
}

void FileManagerTest::withoutInotifyNothingWorks()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    QScopedPointer<DrivenFileManager> manager;
    {
        const FewDescriptors none(0);
        manager.reset(new DrivenFileManager(database.connection()));
    }

    const QStringList expected{
        QStringLiteral("QSocketNotifier: Invalid socket specified"), Constructor,
        QStringLiteral("Failed to initialize inotify")};
    QCOMPARE(log.takeWarnings(), expected);
    QVERIFY(!manager->step());
    QVERIFY(!database.isInTransaction());

    QCOMPARE(manager->appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));

    QCOMPARE(manager->insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));
    const QStringList warnings = log.takeWarnings();
    QCOMPARE(
        warnings,
        queryWarnings(
            InsertFile, QStringLiteral("Failed to execute m_directoryIdQuery."),
            QStringLiteral("QSqlError(\"\", \"Parameter count mismatch\", \"\")"), QString()));
    QVERIFY(!database.isInTransaction());
}

void FileManagerTest::updatesAreScheduledOnce()
{
    MessageLog log;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    manager.scheduleUpdate();
    manager.scheduleUpdate();

    QCOMPARE(manager.runToIdle(), 1);
}

void FileManagerTest::idleIsLoggedWithTheTime()
{
    MessageLog log;
    IndexDatabase database;
    const TestFolder folder;
    DrivenFileManager manager(database.connection());
    QVERIFY(manager.appendDirectory(folder.path(), FileManager::AllEntries, true) != 0);
    QVERIFY(manager.step());
    QCOMPARE(log.takeMessages(), QStringList());

    manager.runToIdle();

    const QStringList messages = log.takeMessages();
    QCOMPARE(messages.size(), 1);
    const QRegularExpression idle(QStringLiteral("^FileManager idle in [0-9]+$"));
    QVERIFY2(idle.match(messages.constFirst()).hasMatch(), qPrintable(messages.constFirst()));
}

void FileManagerTest::scheduledUpdateReadsMetadataInTurns_data()
{
    QTest::addColumn<int>("pending");
    QTest::addColumn<int>("steps");
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("99") << 99 << 1;
    QTest::newRow("100") << 100 << 2;
    QTest::newRow("101") << 101 << 2;
    QTest::newRow("250") << 250 << 3;
}

void FileManagerTest::scheduledUpdateReadsMetadataInTurns()
{
    QFETCH(int, pending);
    QFETCH(int, steps);
    MessageLog log;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    // The image manager is that of the registry, which uses the daemon's own database.
    QSqlQuery query(*DbManager::instance());
    QVERIFY(query.exec(QStringLiteral("DELETE FROM file;")));
    for (int i = 0; i < pending; ++i) {
        QVERIFY(query.exec(
            QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, permissions, "
                           "metadataCurrent) VALUES (1, 'image/png', 'missing%1', 3, 0);")
                .arg(i)));
    }

    manager.scheduleUpdate();

    QCOMPARE(manager.runToIdle(), steps);
    QVERIFY(query.exec(QStringLiteral("SELECT count(*) FROM image JOIN file ON fileId = file.id "
                                      "WHERE metadataCurrent = 1;")));
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), pending);
}

void FileManagerTest::withoutScheduledManagersThereIsNoMetadataToUpdate()
{
    MessageLog log;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    QVERIFY(!manager.updateMetaData());
    manager.scheduleUpdate();
    QVERIFY(!manager.updateMetaData());
    QVERIFY(!manager.updateMetaData());
}

void FileManagerTest::otherEventsGoToTheNotifier()
{
    MessageLog log;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    QEvent other(QEvent::User);
    QEvent update(QEvent::UpdateRequest);
    QEvent readable(QEvent::SockAct);

    QVERIFY(!manager.event(&other));
    QVERIFY(manager.event(&update));
    QVERIFY(manager.event(&readable));
}

QTEST_GUILESS_MAIN(FileManagerTest)

#include "tst_filemanager.moc"
