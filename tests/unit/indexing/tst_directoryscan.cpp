// SPDX-License-Identifier: BSD-3-Clause
// Tests how FileManager scans directories.
#include "announcements.h"
#include "content/dbmanager.h"
#include "content/moodsetcontent.h"
#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "picturefile.h"
#include "refusedcommit.h"
#include "testfolder.h"

#include <QSqlQuery>
#include <QTest>

#include <functional>
#include <utility>

namespace {

const QString ScanDirectory = QStringLiteral("bool FileManager::scanDirectory()");
const QString FileInsert =
    QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, modificationTime, "
                   "permissions, metadataCurrent) VALUES (?, ?, ?, ?, 3, 0);");
const QString DirectoryInsert =
    QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, 0);");

/// This runs just before the next directory is watched.
std::function<void()> beforeNextWatch;

QStringList notWatched(const QString& path)
{
    return {QStringLiteral("Failed to add listener -1 \"%1\"").arg(path)};
}

} // namespace

// The linker replaces the function by this one.
extern "C" {
int __real_inotify_add_watch(int descriptor, const char* path, uint32_t mask);

int __wrap_inotify_add_watch(int descriptor, const char* path, uint32_t mask)
{
    if (beforeNextWatch) {
        std::exchange(beforeNextWatch, {})();
    }
    return __real_inotify_add_watch(descriptor, path, mask);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

/// A directory with a database that has no file manager yet. A test first inserts rows, and then
/// calls scan(), which does the same as a start of the daemon.
struct ScannedFolder
{
    /// Gives the directory a row with the id 1 and this scope.
    explicit ScannedFolder(FileManager::DirectoryScope scope = FileManager::AllEntries)
    {
        database.exec(
            QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, '%1', %2);")
                .arg(folder.path())
                .arg(scope));
    }
    /// Inserts a row with a modification time in 1970 and with metadata that are up to date.
    void addFileRow(const QString& name, int directoryId = 1)
    {
        database.exec(QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                                     "modificationTime, permissions, metadataCurrent) "
                                     "VALUES (%1, 'a/b', '%2', '1970-01-01T12:00:00.000', 3, 1);")
                          .arg(directoryId)
                          .arg(name));
    }
    void addDirectoryRow(int id, const QString& name, int parentId = 1)
    {
        database.exec(QStringLiteral("INSERT INTO directory (id, parentId, path, scope) "
                                     "VALUES (%1, %2, '%3', 0);")
                          .arg(id)
                          .arg(parentId)
                          .arg(folder.path(name)));
    }
    /// Starts a manager and runs it until it is idle. Returns the number of its steps.
    int scan()
    {
        DrivenFileManager manager(database.connection());
        return manager.runToIdle();
    }
    QStringList fileNames() const { return database.fileNames(folder.path()); }
    /// The paths of all directories below the directory that have rows, relative to it.
    QStringList directoryNames() const
    {
        QStringList names = database.directoryPaths();
        names.removeAll(folder.path());
        return names.replaceInStrings(folder.path() + QLatin1Char('/'), QString());
    }
    QVariant metadataCurrent(const QString& name) const
    {
        return database.value(
            QStringLiteral("SELECT metadataCurrent FROM file WHERE fileName = ?;"), {name});
    }
    QDateTime modificationTime(const QString& name) const
    {
        return database
            .value(QStringLiteral("SELECT modificationTime FROM file WHERE fileName = ?;"), {name})
            .toDateTime();
    }

    TestFolder folder;
    IndexDatabase database;
};

QDateTime someTime()
{
    return {QDate(2022, 3, 4), QTime(5, 6, 7, 89)};
}

/// The modification time of the rows of ScannedFolder::addFileRow().
QDateTime rowTime()
{
    return {QDate(1970, 1, 1), QTime(12, 0)};
}

} // namespace

class DirectoryScanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void emptyQueueTouchesNoDatabase();
    void newFileGetsARow();
    void oddNamesGetRows_data();
    void oddNamesGetRows();
    void nameThatTheDatabaseWouldChangeIsLeftOutWithAWarning_data();
    void nameThatTheDatabaseWouldChangeIsLeftOutWithAWarning();
    void directoryThatTheDatabaseWouldChangeIsLeftOutWithAWarning();
    void namesThatAreNotUtf8AreLeftOutWithAWarningEach();
    void namesThatGetNoRowAnywayCostNoWarning_data();
    void namesThatGetNoRowAnywayCostNoWarning();
    void wholeTreeIsWalkedADirectoryAStep();
    void newSubdirectoryIsFollowedInFull();
    void linksAreNotFollowed();
    void hiddenEntriesAreNotListed();
    void fileThatComesJustBeforeTheWatchIsFound();
    void watchedDirectoryInTheQueueHoldsUpNoOther();
    void watchOfALinkDoesNotFollowIt();
    void hiddenFileLosesItsRow();
    void filesThatAreGoneLoseTheirRows();
    void emptyDirectoryLosesAllRows();
    void vanishedDirectoryLosesAllRowsButItsOwn();
    void parentScanDropsAVanishedSubdirectory();
    void rowBehindTheLastNewFileStaysUntilTheNextScan();
    void rowBehindTheLastNewDirectoryStaysAndIsNotQueued();
    void namesBeyondAsciiMatchTheirRows();

    void unchangedFileIsLeftAlone_data();
    void unchangedFileIsLeftAlone();
    void changedTimeCountsEitherWay_data();
    void changedTimeCountsEitherWay();
    void sizeAloneIsNoChange();
    void knownFilesTypeIsNotDetectedAgain();
    void missingTimeCountsAsChange();
    void changeByScope_data();
    void changeByScope();
    void onlyAllEntriesAdds_data();
    void onlyAllEntriesAdds();
    void everyScopeRemoves_data();
    void everyScopeRemoves();
    void knownSubdirectoryIsFollowedAtEveryScope_data();
    void knownSubdirectoryIsFollowedAtEveryScope();

    void registeredSubdirectoryKeepsItsParentUnindexed();
    void failedStatementLosesTheWholeScan_data();
    void failedStatementLosesTheWholeScan();
    void failedCommitIsReportedAndLeavesTheRows();
    void failedFileQueryIsReported();
    void failedDirectoryQueryIsReported();
    void failedLookupOfANewDirectoryIsReported();
    void failureLeavesTheRestOfTheQueueForTheNextUpdate();
    void failedDirectoryIsNotScannedAgain();
    void subdirectoriesOfAFailedScanDropOut();
    void scanInsideATransactionCommitsIt();

    void everyDirectoryIsAnnounced();
    void metadataIsReadWhenTheQueueIsEmpty();
};

void DirectoryScanTest::initTestCase()
{
    // Sets a time zone with summer time, before any time is converted.
    qputenv("TZ", "Europe/Berlin");
}

void DirectoryScanTest::emptyQueueTouchesNoDatabase()
{
    MessageLog log;
    ScannedFolder test;
    DrivenFileManager manager(test.database.connection());
    manager.runToIdle();
    test.database.exec(
        {QStringLiteral("DROP TABLE directory;"), QStringLiteral("DROP TABLE file;")});

    manager.scheduleUpdate();

    QCOMPARE(manager.runToIdle(), 1);
}

void DirectoryScanTest::newFileGetsARow()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a.jpg"));
    test.folder.setModified(QStringLiteral("a.jpg"), someTime());

    test.scan();

    const LibraryDatabase::Rows rows = test.database.rows(QStringLiteral(
        "SELECT directoryId, mimeType, fileName, permissions, metadataCurrent FROM file;"));
    const LibraryDatabase::Rows expected{
        {1, QStringLiteral("image/jpeg"), QStringLiteral("a.jpg"), 3, 0}};
    QCOMPARE(rows, expected);
    QCOMPARE(test.modificationTime(QStringLiteral("a.jpg")), someTime());
}

void DirectoryScanTest::oddNamesGetRows_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\"");
    QTest::newRow("line break") << QStringLiteral("two\nlines");
    QTest::newRow("glob characters") << QStringLiteral("[a]*?");
    QTest::newRow("placeholders") << QStringLiteral("%1 ? :name");
    QTest::newRow("254 bytes") << QString(254, QLatin1Char('x'));
    QTest::newRow("beyond ASCII") << QStringLiteral("\u00e4\U0001f4f7");
}

void DirectoryScanTest::oddNamesGetRows()
{
    QFETCH(QString, name);
    MessageLog log;
    ScannedFolder test;
    const QString directory = name + QLatin1Char('d');
    test.folder.write(name);
    test.folder.makeDirectory(directory);
    test.folder.write(directory + QLatin1Char('/') + name);

    test.scan();
    const LibraryDatabase::Rows before = test.database.rows(
        QStringLiteral("SELECT id, directoryId, fileName FROM file ORDER BY id;"));
    test.scan();

    QCOMPARE(test.fileNames(), QStringList(name));
    QCOMPARE(test.directoryNames(), QStringList(directory));
    QCOMPARE(test.database.fileNames(test.folder.path(directory)), QStringList(name));
    QCOMPARE(
        test.database.rows(
            QStringLiteral("SELECT id, directoryId, fileName FROM file ORDER BY id;")),
        before);
}

void DirectoryScanTest::nameThatTheDatabaseWouldChangeIsLeftOutWithAWarning_data()
{
    addUnstorableNames();
}

void DirectoryScanTest::nameThatTheDatabaseWouldChangeIsLeftOutWithAWarning()
{
    QFETCH(QString, name);
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a.jpg"));
    test.folder.write(name);
    const QStringList warning(unstorableWarning(ScanDirectory, test.folder.path(name)));

    test.scan();
    QCOMPARE(log.takeWarnings(), warning);
    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("a.jpg")));
    test.scan();

    QCOMPARE(log.takeWarnings(), warning);
    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("a.jpg")));
}

void DirectoryScanTest::directoryThatTheDatabaseWouldChangeIsLeftOutWithAWarning()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("a"));
    test.folder.makeDirectory(QStringLiteral("a\uffff"));
    // The path does not begin with a mark.
    test.folder.makeDirectory(QStringLiteral("\ufeffa"));

    test.scan();

    QCOMPARE(
        log.takeWarnings(),
        QStringList(unstorableWarning(ScanDirectory, test.folder.path(QStringLiteral("a\uffff")))));
    QCOMPARE(test.directoryNames(), QStringList({QStringLiteral("a"), QStringLiteral("\ufeffa")}));
}

void DirectoryScanTest::namesThatAreNotUtf8AreLeftOutWithAWarningEach()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.writeRawName("latin\xe4.jpg");
    test.folder.writeRawName("latin\xf6.jpg");
    test.folder.makeRawDirectory("latin\xe4");
    test.folder.write(QStringLiteral("latin\ufffd.jpg"));

    test.scan();

    QStringList warnings = log.takeWarnings();
    warnings.sort();
    QStringList expected;
    for (const char* const name : {"latin\xe4", "latin\xe4.jpg", "latin\xf6.jpg"}) {
        expected.append(undecodableWarning(ScanDirectory, test.folder.rawPath(name)));
    }
    expected.sort();
    QCOMPARE(warnings, expected);
    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("latin\ufffd.jpg")));
    QCOMPARE(test.directoryNames(), QStringList());
}

void DirectoryScanTest::namesThatGetNoRowAnywayCostNoWarning_data()
{
    QTest::addColumn<int>("scope");
    QTest::newRow("known entries") << int(FileManager::KnownEntries);
    QTest::newRow("removals only") << int(FileManager::RemovalsOnly);
}

void DirectoryScanTest::namesThatGetNoRowAnywayCostNoWarning()
{
    QFETCH(int, scope);
    MessageLog log;
    ScannedFolder test(static_cast<FileManager::DirectoryScope>(scope));
    test.folder.write(QStringLiteral("\ufeffa.jpg"));
    test.folder.writeRawName("latin\xe4.jpg");
    DrivenFileManager manager(test.database.connection());

    manager.runToIdle();

    QCOMPARE(manager.watchMasks().size(), 1);
    QCOMPARE(test.fileNames(), QStringList());
}

void DirectoryScanTest::wholeTreeIsWalkedADirectoryAStep()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("a/b/c"));
    test.folder.makeDirectory(QStringLiteral("d"));
    test.folder.write(QStringLiteral("a/b/c/deep.txt"));

    // Five directories, and the step that finds nothing more to do.
    QCOMPARE(test.scan(), 6);

    const QStringList expected{
        QStringLiteral("a"), QStringLiteral("a/b"), QStringLiteral("a/b/c"), QStringLiteral("d")};
    QCOMPARE(test.directoryNames(), expected);
    QCOMPARE(
        test.database.fileNames(test.folder.path(QStringLiteral("a/b/c"))),
        QStringList(QStringLiteral("deep.txt")));
}

void DirectoryScanTest::newSubdirectoryIsFollowedInFull()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("sub"));
    DrivenFileManager manager(test.database.connection());

    manager.runToIdle();

    const LibraryDatabase::Rows expected{{1, 0, test.folder.path(QStringLiteral("sub"))}};
    QCOMPARE(
        test.database.rows(
            QStringLiteral("SELECT parentId, scope, path FROM directory WHERE id <> 1;")),
        expected);
    QCOMPARE(manager.watchMasks(), (QVector<uint>{0xfc2, 0xfc2}));
}

void DirectoryScanTest::linksAreNotFollowed()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.makeLink(QStringLiteral("sub/loop"), QStringLiteral(".."));
    test.folder.makeLink(QStringLiteral("link"), QStringLiteral("sub"));
    test.folder.makeLink(QStringLiteral("broken.jpg"), QStringLiteral("nowhere"));

    QCOMPARE(test.scan(), 3);

    QCOMPARE(test.directoryNames(), QStringList(QStringLiteral("sub")));
    QCOMPARE(test.fileNames(), QStringList());
}

void DirectoryScanTest::hiddenEntriesAreNotListed()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral(".hidden.jpg"));
    test.folder.write(QStringLiteral("shown.jpg"));
    test.folder.makeDirectory(QStringLiteral(".thumbnails"));
    test.folder.makeDirectory(QStringLiteral("sub"));

    test.scan();

    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("shown.jpg")));
    QCOMPARE(test.directoryNames(), QStringList(QStringLiteral("sub")));
}

void DirectoryScanTest::fileThatComesJustBeforeTheWatchIsFound()
{
    MessageLog log;
    ScannedFolder test;
    beforeNextWatch = [&test] { test.folder.write(QStringLiteral("late.jpg")); };

    test.scan();

    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("late.jpg")));
}

void DirectoryScanTest::watchedDirectoryInTheQueueHoldsUpNoOther()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    folder.write(QStringLiteral("a.jpg"));
    folder.makeDirectory(QStringLiteral("other"));
    folder.write(QStringLiteral("other/b.jpg"));
    DrivenFileManager manager(database.connection());
    QVERIFY(manager.insertFile(folder.path(QStringLiteral("a.jpg"))) != 0);
    manager.runToIdle();

    QVERIFY(manager.insertFile(folder.path(QStringLiteral("a.jpg"))) != 0);
    QVERIFY(
        manager.appendDirectory(folder.path(QStringLiteral("other")), FileManager::AllEntries, true)
        != 0);
    manager.runToIdle();

    QCOMPARE(
        database.fileNames(folder.path(QStringLiteral("other"))),
        QStringList(QStringLiteral("b.jpg")));
}

void DirectoryScanTest::watchOfALinkDoesNotFollowIt()
{
    MessageLog log;
    TestFolder folder;
    IndexDatabase database;
    folder.makeDirectory(QStringLiteral("target"));
    folder.write(QStringLiteral("target/a.jpg"));
    folder.makeLink(QStringLiteral("link"), QStringLiteral("target"));
    const QString link = folder.path(QStringLiteral("link"));
    DrivenFileManager manager(database.connection());
    QVERIFY(manager.appendDirectory(link, FileManager::AllEntries, true) != 0);
    manager.runToIdle();
    QCOMPARE(database.fileNames(link), QStringList(QStringLiteral("a.jpg")));
    QCOMPARE(manager.watchMasks().size(), 1);

    folder.write(QStringLiteral("target/b.jpg"));
    manager.readEvents();

    QCOMPARE(database.fileNames(link), QStringList(QStringLiteral("a.jpg")));
}

void DirectoryScanTest::hiddenFileLosesItsRow()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral(".hidden.jpg"));
    test.addFileRow(QStringLiteral(".hidden.jpg"));

    test.scan();

    QCOMPARE(test.fileNames(), QStringList());
}

void DirectoryScanTest::filesThatAreGoneLoseTheirRows()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("b"));
    for (const char* name : {"a", "b", "z"}) {
        test.addFileRow(QString::fromLatin1(name));
    }
    test.database.exec(
        QStringLiteral("INSERT INTO image (fileId) SELECT id FROM file WHERE fileName <> 'b';"));

    test.scan();

    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("b")));
    QCOMPARE(test.database.value(QStringLiteral("SELECT count(*) FROM image;")), QVariant(0));
}

void DirectoryScanTest::emptyDirectoryLosesAllRows()
{
    MessageLog log;
    ScannedFolder test;
    test.addFileRow(QStringLiteral("a"));
    test.addFileRow(QStringLiteral("b"));
    test.addDirectoryRow(2, QStringLiteral("sub"));

    test.scan();

    QCOMPARE(test.fileNames(), QStringList());
    QCOMPARE(test.directoryNames(), QStringList());
}

void DirectoryScanTest::vanishedDirectoryLosesAllRowsButItsOwn()
{
    MessageLog log;
    ScannedFolder test;
    test.database.exec(
        {QStringLiteral("DELETE FROM directory;"),
         QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, '/missing', 0);"),
         QStringLiteral(
             "INSERT INTO directory (parentId, path, scope) VALUES (1, '/missing/sub', 0);")});
    test.addFileRow(QStringLiteral("a"));

    test.scan();

    QCOMPARE(log.takeWarnings(), notWatched(QStringLiteral("/missing")));
    QCOMPARE(test.database.fileNames(QStringLiteral("/missing")), QStringList());
    QCOMPARE(test.database.directoryPaths(), QStringList(QStringLiteral("/missing")));
}

void DirectoryScanTest::parentScanDropsAVanishedSubdirectory()
{
    MessageLog log;
    ScannedFolder test;
    test.addDirectoryRow(2, QStringLiteral("sub"));
    test.addDirectoryRow(3, QStringLiteral("sub/deeper"), 2);
    test.addFileRow(QStringLiteral("a"), 2);

    test.scan();

    QCOMPARE(test.directoryNames(), QStringList());
    QCOMPARE(test.database.value(QStringLiteral("SELECT count(*) FROM file;")), QVariant(0));
}

void DirectoryScanTest::rowBehindTheLastNewFileStaysUntilTheNextScan()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    test.folder.write(QStringLiteral("b"));
    test.addFileRow(QStringLiteral("c"));

    test.scan();
    const QStringList all{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    QCOMPARE(test.fileNames(), all);
    test.scan();

    QCOMPARE(test.fileNames(), all.mid(0, 2));
}

void DirectoryScanTest::rowBehindTheLastNewDirectoryStaysAndIsNotQueued()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("a"));
    test.folder.makeDirectory(QStringLiteral("b"));
    test.addDirectoryRow(2, QStringLiteral("c"));

    // If it had been queued, the log would contain a failed watch.
    test.scan();
    const QStringList all{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    QCOMPARE(test.directoryNames(), all);
    test.scan();

    QCOMPARE(test.directoryNames(), all.mid(0, 2));
}

void DirectoryScanTest::namesBeyondAsciiMatchTheirRows()
{
    MessageLog log;
    ScannedFolder test;
    for (const char16_t* name : {u"Z", u"z", u"\u00e4", u"\uff5e", u"\U0001f600"}) {
        test.folder.write(QString::fromUtf16(name));
    }
    test.scan();
    const QString statement = QStringLiteral("SELECT id, fileName FROM file ORDER BY id;");
    const LibraryDatabase::Rows before = test.database.rows(statement);
    QCOMPARE(before.size(), 5);

    test.scan();

    QCOMPARE(test.database.rows(statement), before);
}

void DirectoryScanTest::unchangedFileIsLeftAlone_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::newRow("winter") << QDateTime(QDate(2021, 1, 1), QTime(0, 0), Qt::UTC);
    QTest::newRow("summer") << QDateTime(QDate(2021, 7, 1), QTime(0, 0, 0, 1), Qt::UTC);
    QTest::newRow("repeated hour, first") << QDateTime(QDate(2021, 10, 31), QTime(0, 30), Qt::UTC);
    QTest::newRow("repeated hour, second") << QDateTime(QDate(2021, 10, 31), QTime(1, 30), Qt::UTC);
    QTest::newRow("before 1970") << QDateTime(QDate(1965, 5, 5), QTime(5, 5, 5, 555), Qt::UTC);
    QTest::newRow("after 2038") << QDateTime(QDate(2050, 5, 5), QTime(5, 5, 5, 555), Qt::UTC);
}

void DirectoryScanTest::unchangedFileIsLeftAlone()
{
    QFETCH(QDateTime, time);
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    test.folder.setModified(QStringLiteral("a"), time);
    test.scan();
    test.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1;"));
    const QString row = QStringLiteral("SELECT * FROM file WHERE fileName = 'a';");
    const LibraryDatabase::Rows before = test.database.rows(row);
    QCOMPARE(before.size(), 1);
    test.folder.write(QStringLiteral("new"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("new")), QVariant(0));
    QCOMPARE(test.database.rows(row), before);
}

void DirectoryScanTest::changedTimeCountsEitherWay_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::newRow("a millisecond later") << qint64(1);
    QTest::newRow("a millisecond earlier") << qint64(-1);
    QTest::newRow("a year later") << qint64(365) * 24 * 3600 * 1000;
}

void DirectoryScanTest::changedTimeCountsEitherWay()
{
    QFETCH(qint64, milliseconds);
    MessageLog log;
    ScannedFolder test;
    const QDateTime time = rowTime().addMSecs(milliseconds);
    test.folder.write(QStringLiteral("a"));
    test.folder.setModified(QStringLiteral("a"), time);
    test.addFileRow(QStringLiteral("a"));
    const qint64 id = test.database.fileId(QStringLiteral("a"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("a")), QVariant(0));
    QCOMPARE(test.modificationTime(QStringLiteral("a")), time);
    QCOMPARE(test.database.fileId(QStringLiteral("a")), id);
}

void DirectoryScanTest::sizeAloneIsNoChange()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"), "longer than before");
    test.folder.setModified(QStringLiteral("a"), rowTime());
    test.addFileRow(QStringLiteral("a"));
    test.folder.write(QStringLiteral("changed"));
    test.addFileRow(QStringLiteral("changed"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("changed")), QVariant(0));
    QCOMPARE(test.metadataCurrent(QStringLiteral("a")), QVariant(1));
}

void DirectoryScanTest::knownFilesTypeIsNotDetectedAgain()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a.jpg"));
    test.addFileRow(QStringLiteral("a.jpg"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("a.jpg")), QVariant(0));
    QCOMPARE(
        test.database.value(QStringLiteral("SELECT mimeType FROM file;")),
        QVariant(QStringLiteral("a/b")));
}

void DirectoryScanTest::missingTimeCountsAsChange()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    test.folder.setModified(QStringLiteral("a"), someTime());
    test.addFileRow(QStringLiteral("a"));
    test.database.exec(QStringLiteral("UPDATE file SET modificationTime = NULL;"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("a")), QVariant(0));
    QCOMPARE(test.modificationTime(QStringLiteral("a")), someTime());
}

void DirectoryScanTest::changeByScope_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("all entries") << 0 << true;
    QTest::newRow("known entries") << 1 << true;
    QTest::newRow("removals only") << 2 << false;
    QTest::newRow("a higher one") << 3 << false;
}

void DirectoryScanTest::changeByScope()
{
    QFETCH(int, scope);
    QFETCH(bool, isSeen);
    MessageLog log;
    ScannedFolder test(static_cast<FileManager::DirectoryScope>(scope));
    test.folder.write(QStringLiteral("a"));
    test.folder.setModified(QStringLiteral("a"), someTime());
    test.addFileRow(QStringLiteral("a"));

    test.scan();

    QCOMPARE(test.metadataCurrent(QStringLiteral("a")), QVariant(isSeen ? 0 : 1));
    QCOMPARE(test.modificationTime(QStringLiteral("a")), isSeen ? someTime() : rowTime());
}

void DirectoryScanTest::onlyAllEntriesAdds_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<bool>("adds");
    QTest::newRow("all entries") << 0 << true;
    QTest::newRow("known entries") << 1 << false;
    QTest::newRow("removals only") << 2 << false;
}

void DirectoryScanTest::onlyAllEntriesAdds()
{
    QFETCH(int, scope);
    QFETCH(bool, adds);
    MessageLog log;
    ScannedFolder test(static_cast<FileManager::DirectoryScope>(scope));
    // One is new before the known entries, and one after them.
    for (const char* name : {"a", "b", "c"}) {
        test.folder.write(QString::fromLatin1(name));
        test.folder.makeDirectory(QString::fromLatin1(name) + QStringLiteral("d"));
    }
    test.addFileRow(QStringLiteral("b"));
    test.addDirectoryRow(2, QStringLiteral("bd"));

    test.scan();

    const QStringList files{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    const QStringList directories{QStringLiteral("ad"), QStringLiteral("bd"), QStringLiteral("cd")};
    QCOMPARE(test.fileNames(), adds ? files : QStringList(files.mid(1, 1)));
    QCOMPARE(test.directoryNames(), adds ? directories : QStringList(directories.mid(1, 1)));
}

void DirectoryScanTest::everyScopeRemoves_data()
{
    QTest::addColumn<int>("scope");
    QTest::newRow("all entries") << 0;
    QTest::newRow("known entries") << 1;
    QTest::newRow("removals only") << 2;
}

void DirectoryScanTest::everyScopeRemoves()
{
    QFETCH(int, scope);
    MessageLog log;
    ScannedFolder test(static_cast<FileManager::DirectoryScope>(scope));
    test.addFileRow(QStringLiteral("a"));
    test.addDirectoryRow(2, QStringLiteral("sub"));

    test.scan();

    QCOMPARE(test.fileNames(), QStringList());
    QCOMPARE(test.directoryNames(), QStringList());
}

void DirectoryScanTest::knownSubdirectoryIsFollowedAtEveryScope_data()
{
    everyScopeRemoves_data();
}

void DirectoryScanTest::knownSubdirectoryIsFollowedAtEveryScope()
{
    QFETCH(int, scope);
    MessageLog log;
    ScannedFolder test(static_cast<FileManager::DirectoryScope>(scope));
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.write(QStringLiteral("sub/a"));
    test.addDirectoryRow(2, QStringLiteral("sub"));

    test.scan();

    QCOMPARE(
        test.database.fileNames(test.folder.path(QStringLiteral("sub"))),
        QStringList(QStringLiteral("a")));
}

void DirectoryScanTest::registeredSubdirectoryKeepsItsParentUnindexed()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("other"));
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.write(QStringLiteral("a"));
    test.folder.write(QStringLiteral("sub/b"));
    test.database.exec(QStringLiteral("INSERT INTO directory (path, scope) VALUES ('%1', 0);")
                           .arg(test.folder.path(QStringLiteral("sub"))));

    DrivenFileManager manager(test.database.connection());
    manager.runToIdle();

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            ScanDirectory, QStringLiteral("Failed to execute m_directoryInsert."),
            QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", "
                           "\"UNIQUE constraint failed: directory.path\")"),
            DirectoryInsert));
    QCOMPARE(test.fileNames(), QStringList());
    QCOMPARE(test.directoryNames(), QStringList(QStringLiteral("sub")));
    QCOMPARE(
        test.database.value(
            QStringLiteral("SELECT count(*) FROM directory WHERE parentId IS NULL;")),
        QVariant(2));
    // The other root is scanned with the next update.
    manager.scheduleUpdate();
    manager.runToIdle();
    QCOMPARE(
        test.database.fileNames(test.folder.path(QStringLiteral("sub"))),
        QStringList(QStringLiteral("b")));
}

void DirectoryScanTest::failedStatementLosesTheWholeScan_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("statement");
    QTest::newRow("m_directoryDelete") << QStringLiteral("DELETE") << QStringLiteral("directory")
                                       << QStringLiteral("Failed to execute m_directoryDelete.")
                                       << QStringLiteral("DELETE FROM directory WHERE id = ?;");
    QTest::newRow("m_directoryInsert")
        << QStringLiteral("INSERT") << QStringLiteral("directory")
        << QStringLiteral("Failed to execute m_directoryInsert.") << DirectoryInsert;
    QTest::newRow("m_fileSyncDelete") << QStringLiteral("DELETE") << QStringLiteral("file")
                                      << QStringLiteral("Failed to execute m_fileSyncDelete.")
                                      << QStringLiteral("DELETE FROM file WHERE id = ?;");
    QTest::newRow("m_fileSyncUpdate")
        << QStringLiteral("UPDATE") << QStringLiteral("file")
        << QStringLiteral("Failed to execute m_fileSyncUpdate.")
        << QStringLiteral(
               "UPDATE file SET modificationTime = ?, metadataCurrent = 0 WHERE id = ?;");
    QTest::newRow("m_fileInsert") << QStringLiteral("INSERT") << QStringLiteral("file")
                                  << QStringLiteral("Failed to execute m_fileInsert.")
                                  << FileInsert;
}

void DirectoryScanTest::failedStatementLosesTheWholeScan()
{
    QFETCH(QString, operation);
    QFETCH(QString, table);
    QFETCH(QString, message);
    QFETCH(QString, statement);
    MessageLog log;
    ScannedFolder test;
    // This has each kind of change once: an addition, an update and a removal.
    test.folder.write(QStringLiteral("b changed"));
    test.folder.write(QStringLiteral("c new"));
    test.folder.makeDirectory(QStringLiteral("new"));
    test.addFileRow(QStringLiteral("a gone"));
    test.addFileRow(QStringLiteral("b changed"));
    test.addDirectoryRow(2, QStringLiteral("gone"));
    const QString files = QStringLiteral("SELECT * FROM file ORDER BY id;");
    const QString directories = QStringLiteral("SELECT * FROM directory ORDER BY id;");
    const LibraryDatabase::Rows filesBefore = test.database.rows(files);
    const LibraryDatabase::Rows directoriesBefore = test.database.rows(directories);
    DrivenFileManager manager(test.database.connection());
    test.database.exec(refuse(operation, table));

    manager.runToIdle();

    QCOMPARE(log.takeWarnings(), queryWarnings(ScanDirectory, message, refusedError(), statement));
    QCOMPARE(test.database.rows(files), filesBefore);
    QCOMPARE(test.database.rows(directories), directoriesBefore);
    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(manager.watchMasks().size(), 1);
}

void DirectoryScanTest::failedCommitIsReportedAndLeavesTheRows()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    DrivenFileManager manager(test.database.connection());
    test.database.exec(refuseCommit(QStringLiteral("INSERT"), QStringLiteral("file")));

    manager.runToIdle();

    QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(ScanDirectory)));
    QCOMPARE(test.fileNames(), QStringList());
    QVERIFY(!test.database.isInTransaction());
}

void DirectoryScanTest::failedFileQueryIsReported()
{
    MessageLog log;
    ScannedFolder test;
    DrivenFileManager manager(test.database.connection());
    test.database.exec(QStringLiteral("DROP TABLE file;"));

    manager.runToIdle();

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            ScanDirectory, QStringLiteral("Failed to execute m_fileQuery"),
            noSuchTable(QStringLiteral("file")),
            QStringLiteral("SELECT id, fileName, modificationTime FROM file WHERE directoryId = ? "
                           "ORDER BY fileName ASC;")));
    QCOMPARE(manager.watchMasks().size(), 1);
}

void DirectoryScanTest::failedDirectoryQueryIsReported()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    DrivenFileManager manager(test.database.connection());
    test.database.exec(
        {QStringLiteral("DROP TRIGGER delete_directory_trigger;"),
         QStringLiteral("ALTER TABLE directory DROP COLUMN parentId;")});

    manager.runToIdle();

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            ScanDirectory, QStringLiteral("Failed to execute m_directoryQuery"),
            QStringLiteral(
                "QSqlError(\"1\", \"Unable to fetch row\", \"no such column: parentId\")"),
            QStringLiteral("SELECT id, path FROM directory WHERE parentId = ? "
                           "ORDER BY path ASC;")));
    QCOMPARE(test.fileNames(), QStringList());
    QVERIFY(!test.database.isInTransaction());
}

void DirectoryScanTest::failedLookupOfANewDirectoryIsReported()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("poison"));
    test.folder.write(QStringLiteral("a"));
    DrivenFileManager manager(test.database.connection());
    // The scope of one row cannot be computed.
    test.database.exec(
        {QStringLiteral("DROP TRIGGER delete_directory_trigger;"),
         QStringLiteral("ALTER TABLE directory RENAME TO known;"),
         QStringLiteral("INSERT INTO known (path, scope) VALUES ('%1', 0);")
             .arg(test.folder.path(QStringLiteral("poison"))),
         QStringLiteral("CREATE VIEW directory AS SELECT id, parentId, path, "
                        "CASE WHEN path LIKE '%/poison' THEN abs(min(id, -9223372036854775808)) "
                        "ELSE scope END AS scope FROM known;")});

    manager.runToIdle();

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            ScanDirectory, QStringLiteral("Failed to execute m_directoryIdQuery."),
            QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", \"integer overflow\")"),
            QStringLiteral("SELECT id, scope FROM directory WHERE path = ?;")));
    QCOMPARE(test.database.value(QStringLiteral("SELECT count(*) FROM file;")), QVariant(0));
    QVERIFY(!test.database.isInTransaction());
}

void DirectoryScanTest::failureLeavesTheRestOfTheQueueForTheNextUpdate()
{
    MessageLog log;
    ScannedFolder test;
    TestFolder second;
    test.folder.write(QStringLiteral("a"));
    second.makeDirectory(QStringLiteral("sub"));
    DrivenFileManager manager(test.database.connection());
    manager.appendDirectory(second.path(), FileManager::AllEntries, true);
    test.database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));

    QCOMPARE(manager.runToIdle(), 1);
    QCOMPARE(log.takeWarnings().size(), 4);
    QCOMPARE(manager.watchMasks().size(), 1);
    manager.scheduleUpdate();
    manager.runToIdle();

    QVERIFY(test.database.directoryPaths().contains(second.path(QStringLiteral("sub"))));
    QCOMPARE(manager.watchMasks().size(), 3);
}

void DirectoryScanTest::failedDirectoryIsNotScannedAgain()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    test.folder.write(QStringLiteral("b"));
    DrivenFileManager manager(test.database.connection());
    test.database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));
    manager.runToIdle();
    QCOMPARE(log.takeWarnings().size(), 4);
    test.database.exec(QStringLiteral("DROP TRIGGER refuse_INSERT_file;"));

    // This queues the directory once more.
    QVERIFY(manager.insertFile(test.folder.path(QStringLiteral("a"))) > 0);
    manager.runToIdle();

    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("a")));
}

void DirectoryScanTest::subdirectoriesOfAFailedScanDropOut()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.makeDirectory(QStringLiteral("sub"));
    DrivenFileManager manager(test.database.connection());
    test.database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("directory")));
    manager.runToIdle();
    QCOMPARE(log.takeWarnings().size(), 4);

    manager.scheduleUpdate();
    manager.runToIdle();

    QCOMPARE(manager.watchMasks().size(), 1);
}

void DirectoryScanTest::scanInsideATransactionCommitsIt()
{
    MessageLog log;
    ScannedFolder test;
    test.folder.write(QStringLiteral("a"));
    DrivenFileManager manager(test.database.connection());
    QVERIFY(test.database.connection().transaction());

    manager.runToIdle();

    QVERIFY(!test.database.isInTransaction());
    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("a")));
}

void DirectoryScanTest::everyDirectoryIsAnnounced()
{
    MessageLog log;
    const Announcements announcements;
    ScannedFolder test;
    DrivenFileManager manager(test.database.connection());

    // The first one is empty, so nothing changes.
    QVERIFY(manager.step());

    QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::File});
}

void DirectoryScanTest::metadataIsReadWhenTheQueueIsEmpty()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub"));
    QVERIFY(writePicture(folder.path(QStringLiteral("a.png")), QSize(30, 20)));
    QVERIFY(writePicture(folder.path(QStringLiteral("sub/b.png")), QSize(50, 40)));
    // The image manager is that of the registry, which uses the daemon's own database.
    DrivenFileManager manager(*DbManager::instance());
    manager.runToIdle();
    manager.appendDirectory(folder.path(), FileManager::AllEntries, true);
    const LibraryDatabase reader;
    const QString images = QStringLiteral(
        "SELECT fileName, width, height FROM image JOIN file ON fileId = id ORDER BY fileName;");

    QVERIFY(manager.step());
    QVERIFY(manager.step());
    QCOMPARE(reader.rows(images), LibraryDatabase::Rows());
    QVERIFY(manager.step());

    const LibraryDatabase::Rows expected{
        {QStringLiteral("a.png"), 30, 20}, {QStringLiteral("b.png"), 50, 40}};
    QCOMPARE(reader.rows(images), expected);
    QVERIFY(!manager.step());
}

QTEST_GUILESS_MAIN(DirectoryScanTest)

#include "tst_directoryscan.moc"
