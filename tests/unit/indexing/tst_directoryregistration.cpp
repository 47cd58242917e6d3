// SPDX-License-Identifier: BSD-3-Clause
// Tests how FileManager registers and watches directories.
#include "indexing/filemanager.h"

#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "testfolder.h"

#include <QTest>

Q_DECLARE_METATYPE(FileManager::DirectoryScope)

namespace {

const QString AppendDirectory = QStringLiteral(
    "qint64 FileManager::appendDirectory(const QString&, FileManager::DirectoryScope, bool)");
const QString WatchDirectory = QStringLiteral(
    "bool FileManager::watchDirectory(const QString&, qint64*, FileManager::DirectoryScope*)");
const QString DirectoryIdQuery = QStringLiteral("SELECT id, scope FROM directory WHERE path = ?;");
const QString DirectoryAppend = QStringLiteral("INSERT INTO directory (path, scope) VALUES(?, ?);");
constexpr uint AllEntriesMask = 0xfc2;
constexpr uint KnownEntriesMask = 0xe42;
constexpr uint RemovalsOnlyMask = 0xe40;

} // namespace

class DirectoryRegistrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void appendingAPathThatTheDatabaseWouldChangeIsReported();
    void appendingReportsAFailedLookup();
    void appendingReportsAFailedInsert();
    void appendingReportsAFailedScopeUpdateAndKeepsWatchAndScope();
    void unwatchableDirectoryIsScannedAtEachQueueing();
    void higherScopesAreWatchedForRemovalsOnly();
    void linkToADirectoryIsWatchedItself();
    void laterPathOfADirectoryTakesOverItsWatch();
    void watchingAnUnknownDirectoryIsTurnedDownSilently();
    void watchingTellsIdAndScopeAlsoOfAWatchedDirectory();
    void watchingReportsAFailedLookup();
    void watchingAVanishedDirectoryIsReportedAndGoesOn();
    void clearingRemovesAllWatchesAndKeepsRows();
    void clearedDirectoryCanBeWatchedAgain();
};

void DirectoryRegistrationTest::appendingAMissingDirectoryDoesNothing()
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

void DirectoryRegistrationTest::appendingMakesARoot_data()
{
    QTest::addColumn<FileManager::DirectoryScope>("scope");
    QTest::newRow("all entries") << FileManager::AllEntries;
    QTest::newRow("known entries") << FileManager::KnownEntries;
    QTest::newRow("removals only") << FileManager::RemovalsOnly;
}

void DirectoryRegistrationTest::appendingMakesARoot()
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
    QCOMPARE(rows.constFirst().at(3).toInt(), int(scope));
}

void DirectoryRegistrationTest::appendingWithoutScanQueuesNothing()
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

void DirectoryRegistrationTest::appendingWithScanWatchesAsTheScopeSays_data()
{
    QTest::addColumn<FileManager::DirectoryScope>("scope");
    QTest::addColumn<uint>("mask");
    QTest::newRow("all entries") << FileManager::AllEntries << AllEntriesMask;
    QTest::newRow("known entries") << FileManager::KnownEntries << KnownEntriesMask;
    QTest::newRow("removals only") << FileManager::RemovalsOnly << RemovalsOnlyMask;
}

void DirectoryRegistrationTest::appendingWithScanWatchesAsTheScopeSays()
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

void DirectoryRegistrationTest::appendingAKnownDirectoryOfThatScopeQueuesNothing()
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

void DirectoryRegistrationTest::appendingWithAnotherScopeAndNoScanOnlyUnwatches()
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

void DirectoryRegistrationTest::appendingWithAnotherScopeAndScanWatchesAnew()
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

void DirectoryRegistrationTest::appendingTakesPathsAsGiven()
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

void DirectoryRegistrationTest::appendingAPathThatTheDatabaseWouldChangeIsReported()
{
    MessageLog log;
    TestFolder folder;
    const QString name = QStringLiteral("sub\ufffe");
    folder.makeDirectory(name);
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.runToIdle();

    QCOMPARE(manager.appendDirectory(folder.path(name), FileManager::AllEntries, true), qint64(0));

    QCOMPARE(
        log.takeWarnings(), QStringList(unstorableWarning(AppendDirectory, folder.path(name))));
    QCOMPARE(database.directoryPaths(), QStringList());
    QVERIFY(!manager.step());
}

void DirectoryRegistrationTest::appendingReportsAFailedLookup()
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

void DirectoryRegistrationTest::appendingReportsAFailedInsert()
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

void DirectoryRegistrationTest::appendingReportsAFailedScopeUpdateAndKeepsWatchAndScope()
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

void DirectoryRegistrationTest::unwatchableDirectoryIsScannedAtEachQueueing()
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

void DirectoryRegistrationTest::higherScopesAreWatchedForRemovalsOnly()
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

void DirectoryRegistrationTest::linkToADirectoryIsWatchedItself()
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

void DirectoryRegistrationTest::laterPathOfADirectoryTakesOverItsWatch()
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

void DirectoryRegistrationTest::watchingAnUnknownDirectoryIsTurnedDownSilently()
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

void DirectoryRegistrationTest::watchingTellsIdAndScopeAlsoOfAWatchedDirectory()
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

void DirectoryRegistrationTest::watchingReportsAFailedLookup()
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

void DirectoryRegistrationTest::watchingAVanishedDirectoryIsReportedAndGoesOn()
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

void DirectoryRegistrationTest::clearingRemovesAllWatchesAndKeepsRows()
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

void DirectoryRegistrationTest::clearedDirectoryCanBeWatchedAgain()
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

QTEST_GUILESS_MAIN(DirectoryRegistrationTest)

#include "tst_directoryregistration.moc"
