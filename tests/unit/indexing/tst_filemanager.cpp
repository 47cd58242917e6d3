// SPDX-License-Identifier: BSD-3-Clause
// FileManager's registering and watching; its scans and its change events have tests of their own.
#include "indexing/filemanager.h"

#include "content/dbmanager.h"
#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "messagelog.h"
#include "testfolder.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

#include <sys/resource.h>

Q_DECLARE_METATYPE(FileManager::DirectoryScope)

namespace {

const QString Constructor =
    QStringLiteral("FileManager::FileManager(QueryAgentDatabase&, QObject*)");
const QString AppendDirectory = QStringLiteral(
    "qint64 FileManager::appendDirectory(const QString&, FileManager::DirectoryScope, bool)");
const QString InsertFile = QStringLiteral("qint64 FileManager::insertFile(const QString&)");
const QString WatchDirectory = QStringLiteral(
    "bool FileManager::watchDirectory(const QString&, qint64*, FileManager::DirectoryScope*)");

const QString DirectoryIdQuery = QStringLiteral("SELECT id, scope FROM directory WHERE path = ?;");
const QString DirectoryAppend = QStringLiteral("INSERT INTO directory (path, scope) VALUES(?, ?);");

const QString NotAuthorized =
    QStringLiteral("QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")");
constexpr uint AllEntriesMask = 0xfc2;
constexpr uint KnownEntriesMask = 0xe42;
constexpr uint RemovalsOnlyMask = 0xe40;

/// While it lives, the process can open no further file.
class NoMoreFiles
{
public:
    NoMoreFiles()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &m_before); }
    Q_DISABLE_COPY_MOVE(NoMoreFiles)

private:
    rlimit m_before;
};

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

    void appendingAMissingDirectoryDoesNothing();
    void appendingMakesARoot_data();
    void appendingMakesARoot();
    void appendingWithoutScanQueuesNothing();
    void appendingWithScanWatchesAsTheScopeSays_data();
    void appendingWithScanWatchesAsTheScopeSays();
    void appendingAKnownDirectoryOfThatScopeQueuesNothing();
    void appendingWithAnotherScopeAndNoScanOnlyUnwatches();
    void appendingWithAnotherScopeAndScanWatchesAnew();
    void appendingTakesPathsAsGiven();
    void appendingReportsAFailedLookup();
    void appendingReportsAFailedInsert();
    void appendingReportsAFailedScopeUpdateAndKeepsWatchAndScope();
    void unwatchableDirectoryIsScannedAtEachQueueing();
    void higherScopesAreWatchedForRemovalsOnly();
    void linkToADirectoryIsWatchedItself();
    void laterPathOfADirectoryTakesOverItsWatch();

    void insertingAMissingFileDoesNothing();
    void insertingRegistersTheFileAndItsDirectory();
    void insertingKeepsTheScopeOfAKnownDirectory();
    void insertingAKnownFileChangesNothing();
    void insertingCleansThePath();
    void insertingKeepsOddNames_data();
    void insertingKeepsOddNames();
    void insertingAFifoDoesNotBlock();
    void insertingGetsANewDirectoryWatched();
    void insertingIntoAWatchedDirectoryScansNothing();
    void insertingReportsAFailedDirectoryLookup();
    void insertingReportsAFailedDirectoryInsert();
    void insertingReportsAFailedFileLookupAndRollsBack();
    void insertingReportsAFailedFileInsertAndRollsBack();
    void insertingInsideATransactionCommitsIt();

    void watchingAnUnknownDirectoryIsTurnedDownSilently();
    void watchingTellsIdAndScopeAlsoOfAWatchedDirectory();
    void watchingReportsAFailedLookup();
    void watchingAVanishedDirectoryIsReportedAndGoesOn();

    void clearingRemovesAllWatchesAndKeepsRows();
    void clearedDirectoryCanBeWatchedAgain();

    void updatesAreScheduledOnce();
    void idleIsLoggedWithTheTime();
    void scheduledUpdateReadsMetadataInTurns_data();
    void scheduledUpdateReadsMetadataInTurns();
    void withoutScheduledManagersThereIsNoMetadataToUpdate();
    void otherEventsGoToTheNotifier();
    void equalityOfWatchesIsThatOfTheirPaths();
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
    // After the four that are prepared.
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
        const NoMoreFiles limit;
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

void FileManagerTest::appendingAMissingDirectoryDoesNothing()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    const qint64 id = manager.appendDirectory(
        folder.path(QStringLiteral("missing")), FileManager::AllEntries, true);

    QCOMPARE(id, qint64(0));
    QCOMPARE(database.directoryPaths(), QStringList());
    QVERIFY(!manager.step());
}

void FileManagerTest::appendingMakesARoot_data()
{
    QTest::addColumn<FileManager::DirectoryScope>("scope");
    QTest::newRow("all entries") << FileManager::AllEntries;
    QTest::newRow("known entries") << FileManager::KnownEntries;
    QTest::newRow("removals only") << FileManager::RemovalsOnly;
}

void FileManagerTest::appendingMakesARoot()
{
    QFETCH(FileManager::DirectoryScope, scope);
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    const qint64 id = manager.appendDirectory(folder.path(), scope, false);

    QVERIFY(id > 0);
    const LibraryDatabase::Rows rows =
        database.rows(QStringLiteral("SELECT id, parentId, path, scope FROM directory;"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.constFirst().at(0).toLongLong(), id);
    QVERIFY(rows.constFirst().at(1).isNull());
    QCOMPARE(rows.constFirst().at(2).toString(), folder.path());
    QCOMPARE(rows.constFirst().at(3).toInt(), static_cast<int>(scope));
}

void FileManagerTest::appendingWithoutScanQueuesNothing()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    QVERIFY(manager.appendDirectory(folder.path(), FileManager::AllEntries, false) > 0);

    QVERIFY(!manager.step());
    QCOMPARE(manager.watchMasks(), QVector<uint>());
}

void FileManagerTest::appendingWithScanWatchesAsTheScopeSays_data()
{
    QTest::addColumn<FileManager::DirectoryScope>("scope");
    QTest::addColumn<uint>("mask");
    QTest::newRow("all entries") << FileManager::AllEntries << AllEntriesMask;
    QTest::newRow("known entries") << FileManager::KnownEntries << KnownEntriesMask;
    QTest::newRow("removals only") << FileManager::RemovalsOnly << RemovalsOnlyMask;
}

void FileManagerTest::appendingWithScanWatchesAsTheScopeSays()
{
    QFETCH(FileManager::DirectoryScope, scope);
    QFETCH(uint, mask);
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    manager.appendDirectory(folder.path(), scope, true);
    QCOMPARE(manager.watchMasks(), QVector<uint>());
    manager.runToIdle();

    QCOMPARE(manager.watchMasks(), QVector<uint>{mask});
}

void FileManagerTest::appendingAKnownDirectoryOfThatScopeQueuesNothing()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    const qint64 id = manager.appendDirectory(folder.path(), FileManager::KnownEntries, false);

    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::KnownEntries, true), id);

    QVERIFY(!manager.step());
    QCOMPARE(manager.watchMasks(), QVector<uint>());
}

void FileManagerTest::appendingWithAnotherScopeAndNoScanOnlyUnwatches()
{
    MessageLog log;
    TestFolder folder;
    TestFolder other;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 id = manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.appendDirectory(other.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    QCOMPARE(manager.watchMasks(), (QVector<uint>{AllEntriesMask, AllEntriesMask}));

    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::RemovalsOnly, false), id);

    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});
    QCOMPARE(
        database.value(
            QStringLiteral("SELECT scope FROM directory WHERE path = ?;"), {folder.path()}),
        QVariant(2));
    QVERIFY(!manager.step());
}

void FileManagerTest::appendingWithAnotherScopeAndScanWatchesAnew()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();

    manager.appendDirectory(folder.path(), FileManager::KnownEntries, true);
    manager.runToIdle();

    QCOMPARE(manager.watchMasks(), QVector<uint>{KnownEntriesMask});
}

void FileManagerTest::appendingTakesPathsAsGiven()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    manager.appendDirectory(folder.path(), FileManager::AllEntries, false);
    manager.appendDirectory(folder.path() + QLatin1Char('/'), FileManager::AllEntries, false);

    const QStringList expected{folder.path(), folder.path() + QLatin1Char('/')};
    QCOMPARE(database.directoryPaths(), expected);
}

void FileManagerTest::appendingReportsAFailedLookup()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    database.exec(QStringLiteral("DROP TABLE directory;"));

    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            AppendDirectory, QStringLiteral("Failed to execute m_directoryIdQuery"),
            noSuchTable(QStringLiteral("directory")), DirectoryIdQuery));
}

void FileManagerTest::appendingReportsAFailedInsert()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("directory")));

    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::AllEntries, true), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            AppendDirectory, QStringLiteral("Failed to execute m_directoryAppend"), refusedError(),
            DirectoryAppend));
    QVERIFY(!manager.step());
}

void FileManagerTest::appendingReportsAFailedScopeUpdateAndKeepsWatchAndScope()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 id = manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    database.exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("directory")));

    QCOMPARE(manager.appendDirectory(folder.path(), FileManager::KnownEntries, true), id);

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            AppendDirectory, QStringLiteral("Failed to execute m_directoryScopeUpdate."),
            refusedError(), QStringLiteral("UPDATE directory SET scope = ? WHERE id = ?;")));
    QCOMPARE(database.value(QStringLiteral("SELECT scope FROM directory;")), QVariant(0));
    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});
    QVERIFY(!manager.step());
}

void FileManagerTest::unwatchableDirectoryIsScannedAtEachQueueing()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("locked"));
    const QString path = folder.path(QStringLiteral("locked"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    folder.setMode(QStringLiteral("locked"), 0300);
    const QStringList warning(QStringLiteral("Failed to add listener -1 \"%1\"").arg(path));

    manager.appendDirectory(path, FileManager::AllEntries, true);
    manager.runToIdle();
    QCOMPARE(log.takeWarnings(), warning);
    manager.appendDirectory(path, FileManager::KnownEntries, true);
    manager.runToIdle();
    QCOMPARE(log.takeWarnings(), warning);
    folder.setMode(QStringLiteral("locked"), 0700);
    folder.write(QStringLiteral("locked/a.txt"));
    manager.appendDirectory(path, FileManager::AllEntries, true);
    manager.runToIdle();

    QCOMPARE(database.fileNames(path), QStringList(QStringLiteral("a.txt")));
    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});
}

void FileManagerTest::higherScopesAreWatchedForRemovalsOnly()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.txt"));
    IndexDatabase database;
    database.exec(
        QStringLiteral("INSERT INTO directory (path, scope) VALUES ('%1', 3);").arg(folder.path()));

    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    QCOMPARE(manager.watchMasks(), QVector<uint>{RemovalsOnlyMask});
    QCOMPARE(database.fileNames(folder.path()), QStringList());
}

void FileManagerTest::linkToADirectoryIsWatchedItself()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("target"));
    folder.makeLink(QStringLiteral("link"), QStringLiteral("target"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(QStringLiteral("link")), FileManager::AllEntries, true);
    manager.runToIdle();
    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});

    folder.write(QStringLiteral("target/a.txt"));
    manager.readEvents();

    QCOMPARE(database.fileNames(folder.path(QStringLiteral("link"))), QStringList());
}

void FileManagerTest::laterPathOfADirectoryTakesOverItsWatch()
{
    MessageLog log;
    TestFolder folder;
    const QString laterPath = folder.path(QStringLiteral("."));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    manager.appendDirectory(laterPath, FileManager::AllEntries, true);
    manager.runToIdle();
    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});

    folder.write(QStringLiteral("a.txt"));
    manager.readEvents();

    QCOMPARE(database.fileNames(laterPath), QStringList(QStringLiteral("a.txt")));
    QCOMPARE(database.fileNames(folder.path()), QStringList());
}

void FileManagerTest::insertingAMissingFileDoesNothing()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("missing.jpg"))), qint64(0));

    QCOMPARE(database.directoryPaths(), QStringList());
    QVERIFY(!database.isInTransaction());
    QVERIFY(!manager.step());
}

void FileManagerTest::insertingRegistersTheFileAndItsDirectory()
{
    MessageLog log;
    TestFolder folder;
    const QDateTime time(QDate(2021, 7, 1), QTime(23, 59, 59, 999));
    folder.write(QStringLiteral("a.jpg"));
    folder.setModified(QStringLiteral("a.jpg"), time);
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    const qint64 id = manager.insertFile(folder.path(QStringLiteral("a.jpg")));

    QVERIFY(id > 0);
    QCOMPARE(
        database.value(QStringLiteral(
            "SELECT directory.path FROM file JOIN directory ON directoryId = directory.id "
            "WHERE parentId IS NULL AND scope = 1;")),
        QVariant(folder.path()));
    const LibraryDatabase::Rows rows = database.rows(QStringLiteral(
        "SELECT id, mimeType, fileName, modificationTime, permissions, metadataCurrent, "
        "COALESCE(displayName, '') FROM file;"));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.constFirst().at(0).toLongLong(), id);
    QCOMPARE(rows.constFirst().at(1).toString(), QStringLiteral("image/jpeg"));
    QCOMPARE(rows.constFirst().at(2).toString(), QStringLiteral("a.jpg"));
    QCOMPARE(rows.constFirst().at(3).toDateTime(), time);
    QCOMPARE(rows.constFirst().at(4).toInt(), 3);
    QCOMPARE(rows.constFirst().at(5).toInt(), 0);
    QCOMPARE(rows.constFirst().at(6).toString(), QString());
}

void FileManagerTest::insertingKeepsTheScopeOfAKnownDirectory()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::RemovalsOnly, false);

    QVERIFY(manager.insertFile(folder.path(QStringLiteral("a.jpg"))) > 0);

    QCOMPARE(database.value(QStringLiteral("SELECT scope FROM directory;")), QVariant(2));
    QCOMPARE(database.fileNames(folder.path()), QStringList(QStringLiteral("a.jpg")));
}

void FileManagerTest::insertingAKnownFileChangesNothing()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 id = manager.insertFile(folder.path(QStringLiteral("a.jpg")));
    database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1, mimeType = 'a/b';"));
    const LibraryDatabase::Rows before = database.rows(QStringLiteral("SELECT * FROM file;"));
    folder.setModified(QStringLiteral("a.jpg"), QDateTime(QDate(2001, 1, 1), QTime(1, 1)));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), id);

    QCOMPARE(database.rows(QStringLiteral("SELECT * FROM file;")), before);
    QVERIFY(!database.isInTransaction());
}

void FileManagerTest::insertingCleansThePath()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub"));
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 id = manager.insertFile(folder.path(QStringLiteral("a.jpg")));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("sub/..//a.jpg"))), id);

    QCOMPARE(database.directoryPaths(), QStringList(folder.path()));
}

void FileManagerTest::insertingKeepsOddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\".jpg");
    QTest::newRow("line break") << QStringLiteral("two\nlines.jpg");
    QTest::newRow("glob characters") << QStringLiteral("[a]*?.jpg");
    QTest::newRow("placeholders") << QStringLiteral("%1 ? :name.jpg");
    QTest::newRow("255 bytes") << QString(251, QLatin1Char('x')) + QStringLiteral(".jpg");
    QTest::newRow("beyond ASCII") << QStringLiteral("\u00e4\U0001f4f7.jpg");
    QTest::newRow("hidden") << QStringLiteral(".hidden.jpg");
}

void FileManagerTest::insertingKeepsOddNames()
{
    QFETCH(QString, name);
    MessageLog log;
    TestFolder folder;
    folder.write(name);
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    const qint64 id = manager.insertFile(folder.path(name));

    QVERIFY(id > 0);
    QCOMPARE(database.fileId(name), id);
    QCOMPARE(manager.insertFile(folder.path(name)), id);
}

void FileManagerTest::insertingAFifoDoesNotBlock()
{
    MessageLog log;
    TestFolder folder;
    folder.makeFifo(QStringLiteral("pipe.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    QVERIFY(manager.insertFile(folder.path(QStringLiteral("pipe.jpg"))) > 0);

    QCOMPARE(
        database.value(QStringLiteral("SELECT mimeType FROM file;")),
        QVariant(QStringLiteral("inode/fifo")));
}

void FileManagerTest::insertingGetsANewDirectoryWatched()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    folder.write(QStringLiteral("b.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());

    manager.insertFile(folder.path(QStringLiteral("a.jpg")));
    manager.runToIdle();

    QCOMPARE(manager.watchMasks(), QVector<uint>{KnownEntriesMask});
    QCOMPARE(database.fileNames(folder.path()), QStringList(QStringLiteral("a.jpg")));
}

void FileManagerTest::insertingIntoAWatchedDirectoryScansNothing()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    folder.write(QStringLiteral("a.jpg"));
    folder.write(QStringLiteral("b.jpg"));

    manager.insertFile(folder.path(QStringLiteral("a.jpg")));

    QCOMPARE(manager.runToIdle(), 1);
    QCOMPARE(database.fileNames(folder.path()), QStringList(QStringLiteral("a.jpg")));
}

void FileManagerTest::insertingReportsAFailedDirectoryLookup()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    database.exec(QStringLiteral("DROP TABLE directory;"));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            InsertFile, QStringLiteral("Failed to execute m_directoryIdQuery."),
            noSuchTable(QStringLiteral("directory")), DirectoryIdQuery));
    QVERIFY(!database.isInTransaction());
    QVERIFY(!manager.step());
}

void FileManagerTest::insertingReportsAFailedDirectoryInsert()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("directory")));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            InsertFile, QStringLiteral("Failed to execute m_directoryAppend."), refusedError(),
            DirectoryAppend));
    QVERIFY(!database.isInTransaction());
    QVERIFY(!manager.step());
}

void FileManagerTest::insertingReportsAFailedFileLookupAndRollsBack()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();
    database.exec(QStringLiteral("DROP TABLE file;"));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            InsertFile, QStringLiteral("Failed to execute m_fileIdQuery."),
            noSuchTable(QStringLiteral("file")),
            QStringLiteral("SELECT id FROM file WHERE directoryId = ? AND fileName = ?;")));
    QVERIFY(!database.isInTransaction());
    QCOMPARE(database.directoryPaths(), QStringList());
    // The queue has the directory all the same; without a row it is dropped silently.
    QCOMPARE(manager.runToIdle(), 1);
    QCOMPARE(manager.watchMasks(), QVector<uint>());
}

void FileManagerTest::insertingReportsAFailedFileInsertAndRollsBack()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            InsertFile, QStringLiteral("Failed to execute m_fileInsert."), refusedError(),
            QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, modificationTime, "
                           "permissions, metadataCurrent) VALUES (?, ?, ?, ?, 3, 0);")));
    QVERIFY(!database.isInTransaction());
    QCOMPARE(database.directoryPaths(), QStringList());
}

void FileManagerTest::insertingInsideATransactionCommitsIt()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    QVERIFY(database.connection().transaction());

    QVERIFY(manager.insertFile(folder.path(QStringLiteral("a.jpg"))) > 0);

    QVERIFY(!database.isInTransaction());
    QCOMPARE(database.fileNames(folder.path()), QStringList(QStringLiteral("a.jpg")));
}

void FileManagerTest::watchingAnUnknownDirectoryIsTurnedDownSilently()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    qint64 id = 17;
    FileManager::DirectoryScope scope = FileManager::KnownEntries;

    QVERIFY(!manager.watchDirectory(folder.path(), &id, &scope));

    QCOMPARE(id, qint64(17));
    QCOMPARE(scope, FileManager::KnownEntries);
    QCOMPARE(manager.watchMasks(), QVector<uint>());
}

void FileManagerTest::watchingTellsIdAndScopeAlsoOfAWatchedDirectory()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 expectedId =
        manager.appendDirectory(folder.path(), FileManager::RemovalsOnly, false);

    for (const bool goOn : {true, false}) {
        qint64 id = 0;
        FileManager::DirectoryScope scope = FileManager::AllEntries;
        QCOMPARE(manager.watchDirectory(folder.path(), &id, &scope), goOn);
        QCOMPARE(id, expectedId);
        QCOMPARE(scope, FileManager::RemovalsOnly);
        QCOMPARE(manager.watchMasks(), QVector<uint>{RemovalsOnlyMask});
    }
}

void FileManagerTest::watchingReportsAFailedLookup()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    database.exec(QStringLiteral("DROP TABLE directory;"));
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::AllEntries;

    QVERIFY(!manager.watchDirectory(folder.path(), &id, &scope));

    const QStringList expected{
        WatchDirectory, QStringLiteral("Failed to execute m_directoryIdQuery."),
        noSuchTable(QStringLiteral("directory"))};
    QCOMPARE(log.takeWarnings(), expected);
}

void FileManagerTest::watchingAVanishedDirectoryIsReportedAndGoesOn()
{
    MessageLog log;
    TestFolder folder;
    const QString name = QStringLiteral("two\n\"lines\"");
    folder.makeDirectory(name);
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    const qint64 expectedId =
        manager.appendDirectory(folder.path(name), FileManager::KnownEntries, false);
    folder.remove(name);
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::AllEntries;

    QVERIFY(manager.watchDirectory(folder.path(name), &id, &scope));

    QCOMPARE(id, expectedId);
    QCOMPARE(scope, FileManager::KnownEntries);
    QCOMPARE(
        log.takeWarnings(),
        QStringList(QStringLiteral("Failed to add listener -1 \"%1/two\\n\\\"lines\\\"\"")
                        .arg(folder.path())));
}

void FileManagerTest::clearingRemovesAllWatchesAndKeepsRows()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    QCOMPARE(manager.watchMasks().size(), 2);

    manager.clearWatches();

    QCOMPARE(manager.watchMasks(), QVector<uint>());
    const QStringList expected{folder.path(), folder.path(QStringLiteral("sub"))};
    QCOMPARE(database.directoryPaths(), expected);
}

void FileManagerTest::clearedDirectoryCanBeWatchedAgain()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    manager.runToIdle();
    manager.clearWatches();
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::AllEntries;

    QVERIFY(manager.watchDirectory(folder.path(), &id, &scope));

    QCOMPARE(manager.watchMasks(), QVector<uint>{AllEntriesMask});
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
    DrivenFileManager manager(database.connection());

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
    // The image manager is the registry's, with the daemon's own database.
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

void FileManagerTest::equalityOfWatchesIsThatOfTheirPaths()
{
    const FileManager::WatchedDirectory watch{QStringLiteral("/a/"), 1};

    QVERIFY((watch == FileManager::WatchedDirectory{QStringLiteral("/a/"), 2}));
    QVERIFY(!(watch == FileManager::WatchedDirectory{QStringLiteral("/b/"), 1}));
    QVERIFY(FileManager::WatchedDirectory().path.isEmpty());
    QCOMPARE(FileManager::WatchedDirectory().id, qint64(0));
}

QTEST_GUILESS_MAIN(FileManagerTest)

#include "tst_filemanager.moc"
