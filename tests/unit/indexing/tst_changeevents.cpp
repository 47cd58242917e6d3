// SPDX-License-Identifier: BSD-3-Clause
// Tests how FileManager handles the changes that the kernel reports.
#include "announcements.h"
#include "content/moodsetcontent.h"
#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "refusedcommit.h"
#include "testfolder.h"

#include <QTest>

namespace {

const QString ReadEvent = QStringLiteral("bool FileManager::readEvent()");
const QString FileInsert =
    QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, modificationTime, "
                   "permissions, metadataCurrent) VALUES (?, ?, ?, ?, 3, 0);");

QDateTime someTime()
{
    return {QDate(2022, 3, 4), QTime(5, 6, 7, 89)};
}

/// A watched directory with the files "known" and "other", whose metadata have been read.
struct WatchedFolder
{
    explicit WatchedFolder(int scope = FileManager::AllEntries)
        : manager(database.connection())
    {
        folder.write(QStringLiteral("known"));
        folder.write(QStringLiteral("other"));
        manager.insertFile(folder.path(QStringLiteral("known")));
        manager.insertFile(folder.path(QStringLiteral("other")));
        // The scope of the files is different, so this adds the watch again.
        if (scope != FileManager::KnownEntries) {
            manager.appendDirectory(
                folder.path(), static_cast<FileManager::DirectoryScope>(scope), true);
        }
        manager.runToIdle();
        database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1;"));
    }
    QStringList fileNames() const { return database.fileNames(folder.path()); }
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
    QString mimeType(const QString& name) const
    {
        return database
            .value(QStringLiteral("SELECT mimeType FROM file WHERE fileName = ?;"), {name})
            .toString();
    }

    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager manager;
};

const QStringList KnownFiles{QStringLiteral("known"), QStringLiteral("other")};

QStringList withKnownFiles(const QString& name)
{
    QStringList names = KnownFiles;
    names.append(name);
    names.sort();
    return names;
}

QStringList nameTaken()
{
    return queryWarnings(
        ReadEvent, QStringLiteral("Failed to execute m_fileInsert."),
        QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", "
                       "\"UNIQUE constraint failed: file.directoryId, file.fileName\")"),
        FileInsert);
}

} // namespace

class ChangeEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arriveThroughTheEventLoop();
    void newFileGetsARow();
    void newFileInManyPiecesGetsOneRow();
    void oddNamesGetRows_data();
    void oddNamesGetRows();
    void namesThatAreNotUtf8GetNoRowAndOneWarningEach();
    void nameThatTheDatabaseWouldChangeGetsNoRowAndOneWarning_data();
    void nameThatTheDatabaseWouldChangeGetsNoRowAndOneWarning();
    void nameThatTheDatabaseWouldChangeLeavesItsNeighbourAlone();
    void newDirectoryThatTheDatabaseWouldChangeIsLeftOut();
    void hiddenFileGetsARowUntilTheNextScan();
    void fifoGetsARowWithoutBlocking();
    void linkToADirectoryIsAFile();
    void brokenLinkGetsARowWithoutATime();
    void thousandNewFilesGetRowsAtOnce();
    void changedFileIsToBeReadAgain();
    void writeCountsBeforeTheFileIsClosed();
    void fileThatIsGoneLosesItsRow_data();
    void fileThatIsGoneLosesItsRow();
    void fileMovedInGetsARow();
    void renamedFileChangesItsRow();
    void fileThatComesAndGoesLeavesNoRow();

    void recreatedFileLosesAllChangesOfTheRead();
    void replacedFileLosesAllChangesOfTheRead();
    void fileInsertedByHandCollidesWithItsOwnEvent();

    void newDirectoryIsRegisteredAndScanned();
    void directoryMovedInStaysUnknown();
    void directoryThatIsGoneLosesItsRows_data();
    void directoryThatIsGoneLosesItsRows();
    void rootThatIsDeletedLosesItsRow();

    void scopeDecidesWhatIsSeen_data();
    void scopeDecidesWhatIsSeen();
    void eventsOfClearedWatchesAreSkipped();
    void droppedEventsChangeNothing();
    void readOfNothingDoesNotBlockAndStillUpdates();

    void failedBatchLosesAllChangesOfTheRead_data();
    void failedBatchLosesAllChangesOfTheRead();
    void failedCommitIsReportedAndLeavesTheRows();
    void nextReadAfterAFailureStartsAfresh();
    void readInsideATransactionIsReportedAndGoesOn();

    void filesAreAnnounced();
    void failedReadIsNotAnnounced();
};

void ChangeEventsTest::arriveThroughTheEventLoop()
{
    MessageLog log;
    WatchedFolder test;

    test.folder.makeDirectory(QStringLiteral("sub"));
    QTRY_COMPARE(test.manager.watchMasks().size(), 2);
    test.folder.write(QStringLiteral("sub/new.jpg"));

    QTRY_COMPARE(
        test.database.fileNames(test.folder.path(QStringLiteral("sub"))),
        QStringList(QStringLiteral("new.jpg")));
}

void ChangeEventsTest::newFileGetsARow()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("new.jpg"), QByteArray());
    test.folder.setModified(QStringLiteral("new.jpg"), someTime());

    test.manager.readEvents();

    const LibraryDatabase::Rows expected{{test.folder.path(), QStringLiteral("image/jpeg"), 3, 0}};
    QCOMPARE(
        test.database.rows(QStringLiteral(
            "SELECT path, mimeType, permissions, metadataCurrent FROM file "
            "JOIN directory ON directoryId = directory.id WHERE fileName = 'new.jpg';")),
        expected);
    QCOMPARE(test.modificationTime(QStringLiteral("new.jpg")), someTime());
}

void ChangeEventsTest::newFileInManyPiecesGetsOneRow()
{
    MessageLog log;
    WatchedFolder test;
    for (int i = 0; i < 5; ++i) {
        test.folder.write(QStringLiteral("new.jpg"), QByteArray(i, 'x'));
        test.folder.write(QStringLiteral("known"), QByteArray(i, 'x'));
    }
    test.folder.setModified(QStringLiteral("new.jpg"), someTime());

    test.manager.readEvents();

    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new.jpg")));
    QCOMPARE(test.modificationTime(QStringLiteral("new.jpg")), someTime());
}

void ChangeEventsTest::oddNamesGetRows_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\"");
    QTest::newRow("line break") << QStringLiteral("two\nlines");
    QTest::newRow("glob characters") << QStringLiteral("[a]*?");
    QTest::newRow("placeholders") << QStringLiteral("%1 ? :name");
    QTest::newRow("1 byte") << QStringLiteral("x");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('x'));
    QTest::newRow("beyond ASCII") << QStringLiteral("\u00e4\U0001f4f7");
}

void ChangeEventsTest::oddNamesGetRows()
{
    QFETCH(QString, name);
    MessageLog log;
    WatchedFolder test;
    test.folder.write(name);

    test.manager.readEvents();
    QCOMPARE(test.fileNames(), withKnownFiles(name));
    test.folder.remove(name);
    test.manager.readEvents();

    QCOMPARE(test.fileNames(), KnownFiles);
}

void ChangeEventsTest::namesThatAreNotUtf8GetNoRowAndOneWarningEach()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.writeRawName("latin\xe4.jpg", "in two pieces: ");
    test.folder.writeRawName("latin\xf6.jpg");
    test.folder.makeRawDirectory("latin\xe4");
    test.folder.write(QStringLiteral("latin\ufffd.jpg"));

    test.manager.readEvents();
    test.manager.runToIdle();

    QStringList expected;
    for (const char* const name : {"latin\xe4.jpg", "latin\xf6.jpg", "latin\xe4"}) {
        expected.append(undecodableWarning(ReadEvent, test.folder.rawPath(name)));
    }
    QCOMPARE(log.takeWarnings(), expected);
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("latin\ufffd.jpg")));
    QCOMPARE(test.database.directoryPaths(), QStringList(test.folder.path()));
}

void ChangeEventsTest::nameThatTheDatabaseWouldChangeGetsNoRowAndOneWarning_data()
{
    addUnstorableNames();
}

void ChangeEventsTest::nameThatTheDatabaseWouldChangeGetsNoRowAndOneWarning()
{
    QFETCH(QString, name);
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("a.jpg"));
    test.folder.write(name, "content");
    test.folder.write(name, "other content");

    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), QStringList(unstorableWarning(ReadEvent, test.folder.path(name))));
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("a.jpg")));
}

void ChangeEventsTest::nameThatTheDatabaseWouldChangeLeavesItsNeighbourAlone()
{
    MessageLog log;
    WatchedFolder test;
    const QString name = QStringLiteral("\ufeffknown");
    test.folder.write(name);
    test.manager.readEvents();
    QCOMPARE(log.takeWarnings().size(), 1);
    const QDateTime time = test.modificationTime(QStringLiteral("known"));

    test.folder.write(name, "changed");
    test.folder.setModified(name, someTime());
    test.manager.readEvents();
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(1));
    QCOMPARE(test.modificationTime(QStringLiteral("known")), time);
    test.folder.remove(name);
    test.manager.readEvents();

    QCOMPARE(test.fileNames(), KnownFiles);
}

void ChangeEventsTest::newDirectoryThatTheDatabaseWouldChangeIsLeftOut()
{
    MessageLog log;
    WatchedFolder test;
    const QString name = QStringLiteral("sub\ufffe");
    // The path does not begin with a mark.
    const QString marked = QStringLiteral("\ufeffsub");
    test.folder.makeDirectory(name);
    test.folder.makeDirectory(marked);

    test.manager.readEvents();
    test.manager.runToIdle();

    QCOMPARE(log.takeWarnings(), QStringList(unstorableWarning(ReadEvent, test.folder.path(name))));
    QCOMPARE(
        test.database.directoryPaths(),
        QStringList({test.folder.path(), test.folder.path(marked)}));
}

void ChangeEventsTest::hiddenFileGetsARowUntilTheNextScan()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral(".hidden"));

    test.manager.readEvents();
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral(".hidden")));
    DrivenFileManager nextStart(test.database.connection());
    nextStart.runToIdle();

    QCOMPARE(test.fileNames(), KnownFiles);
}

void ChangeEventsTest::fifoGetsARowWithoutBlocking()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("new.jpg"));
    test.folder.makeFifo(QStringLiteral("pipe.jpg"));

    test.manager.readEvents();
    test.manager.runToIdle();

    QCOMPARE(test.mimeType(QStringLiteral("pipe.jpg")), QStringLiteral("inode/fifo"));
}

void ChangeEventsTest::linkToADirectoryIsAFile()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.makeLink(QStringLiteral("link"), QStringLiteral("."));

    test.manager.readEvents();
    test.manager.runToIdle();

    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("link")));
    QCOMPARE(test.mimeType(QStringLiteral("link")), QStringLiteral("inode/directory"));
    QCOMPARE(test.database.directoryPaths(), QStringList(test.folder.path()));
}

void ChangeEventsTest::brokenLinkGetsARowWithoutATime()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.makeLink(QStringLiteral("link.jpg"), QStringLiteral("nowhere"));

    test.manager.readEvents();

    QVERIFY(test.modificationTime(QStringLiteral("link.jpg")).isNull());
    QCOMPARE(test.mimeType(QStringLiteral("link.jpg")), QStringLiteral("image/jpeg"));
}

void ChangeEventsTest::thousandNewFilesGetRowsAtOnce()
{
    MessageLog log;
    WatchedFolder test;
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i) {
        test.folder.write(QStringLiteral("new%1.jpg").arg(i));
    }

    test.manager.readEvents();

    QCOMPARE(test.fileNames().size(), KnownFiles.size() + count);
    QCOMPARE(test.mimeType(QStringLiteral("new999.jpg")), QStringLiteral("image/jpeg"));
}

void ChangeEventsTest::changedFileIsToBeReadAgain()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("known"), "changed");
    test.folder.setModified(QStringLiteral("known"), someTime());

    test.manager.readEvents();

    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(0));
    QCOMPARE(test.modificationTime(QStringLiteral("known")), someTime());
    QCOMPARE(test.metadataCurrent(QStringLiteral("other")), QVariant(1));
}

void ChangeEventsTest::writeCountsBeforeTheFileIsClosed()
{
    MessageLog log;
    WatchedFolder test;
    QFile file(test.folder.path(QStringLiteral("known")));
    QVERIFY(file.open(QIODevice::Append | QIODevice::Unbuffered));
    test.manager.readEvents();
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(1));

    QCOMPARE(file.write("more"), qint64(4));
    test.manager.readEvents();

    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(0));
}

void ChangeEventsTest::fileThatIsGoneLosesItsRow_data()
{
    QTest::addColumn<bool>("isMoved");
    QTest::newRow("removed") << false;
    QTest::newRow("moved out") << true;
}

void ChangeEventsTest::fileThatIsGoneLosesItsRow()
{
    QFETCH(bool, isMoved);
    MessageLog log;
    TestFolder outside;
    WatchedFolder test;
    if (isMoved) {
        test.folder.makeDirectory(QStringLiteral("sub"));
        test.manager.readEvents();
        test.folder.rename(QStringLiteral("known"), QStringLiteral("sub/known"));
    } else {
        test.folder.remove(QStringLiteral("known"));
    }

    test.manager.readEvents();

    QCOMPARE(test.fileNames(), QStringList(QStringLiteral("other")));
}

void ChangeEventsTest::fileMovedInGetsARow()
{
    MessageLog log;
    WatchedFolder test;
    TestFolder outside;
    outside.write(QStringLiteral("new.png"));
    outside.setModified(QStringLiteral("new.png"), someTime());

    QVERIFY(QFile::rename(
        outside.path(QStringLiteral("new.png")), test.folder.path(QStringLiteral("new.png"))));
    test.manager.readEvents();

    QCOMPARE(test.mimeType(QStringLiteral("new.png")), QStringLiteral("image/png"));
    QCOMPARE(test.modificationTime(QStringLiteral("new.png")), someTime());
}

void ChangeEventsTest::renamedFileChangesItsRow()
{
    MessageLog log;
    WatchedFolder test;

    test.folder.rename(QStringLiteral("known"), QStringLiteral("renamed"));
    test.manager.readEvents();

    const QStringList expected{QStringLiteral("other"), QStringLiteral("renamed")};
    QCOMPARE(test.fileNames(), expected);
}

void ChangeEventsTest::fileThatComesAndGoesLeavesNoRow()
{
    MessageLog log;
    WatchedFolder test;

    test.folder.write(QStringLiteral("brief.jpg"));
    test.folder.remove(QStringLiteral("brief.jpg"));
    test.folder.write(QStringLiteral("stays.jpg"));
    test.manager.readEvents();

    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("stays.jpg")));
}

void ChangeEventsTest::recreatedFileLosesAllChangesOfTheRead()
{
    MessageLog log;
    WatchedFolder test;
    const qint64 id = test.database.fileId(QStringLiteral("known"));

    test.folder.remove(QStringLiteral("known"));
    test.folder.write(QStringLiteral("known"));
    test.folder.write(QStringLiteral("new"));
    test.folder.write(QStringLiteral("other"), "changed");
    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), nameTaken());
    QCOMPARE(test.fileNames(), KnownFiles);
    QCOMPARE(test.database.fileId(QStringLiteral("known")), id);
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(1));
    QCOMPARE(test.metadataCurrent(QStringLiteral("other")), QVariant(1));
    QVERIFY(!test.database.isInTransaction());
    QVERIFY(!test.manager.step());
}

void ChangeEventsTest::replacedFileLosesAllChangesOfTheRead()
{
    MessageLog log;
    WatchedFolder test;

    test.folder.write(QStringLiteral("new"));
    test.manager.readEvents();
    test.folder.rename(QStringLiteral("new"), QStringLiteral("known"));
    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), nameTaken());
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new")));
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(1));
}

void ChangeEventsTest::fileInsertedByHandCollidesWithItsOwnEvent()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("new"));
    QVERIFY(test.manager.insertFile(test.folder.path(QStringLiteral("new"))) > 0);

    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), nameTaken());
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new")));
}

void ChangeEventsTest::newDirectoryIsRegisteredAndScanned()
{
    MessageLog log;
    WatchedFolder test;
    const QString path = test.folder.path(QStringLiteral("sub"));
    test.folder.makeDirectory(QStringLiteral("sub/deeper"));
    test.folder.write(QStringLiteral("sub/a"));

    test.manager.readEvents();
    QCOMPARE(
        test.database.value(
            QStringLiteral("SELECT count(*) FROM directory AS sub JOIN directory AS parent "
                           "ON sub.parentId = parent.id WHERE sub.scope = 0 AND sub.path = ? "
                           "AND parent.path = ?;"),
            {path, test.folder.path()}),
        QVariant(1));
    QCOMPARE(test.database.fileNames(path), QStringList());
    test.manager.runToIdle();

    QCOMPARE(test.database.fileNames(path), QStringList(QStringLiteral("a")));
    QVERIFY(test.database.directoryPaths().contains(path + QStringLiteral("/deeper")));
    QCOMPARE(test.manager.watchMasks().size(), 3);
}

void ChangeEventsTest::directoryMovedInStaysUnknown()
{
    MessageLog log;
    WatchedFolder test;
    TestFolder outside;
    outside.makeDirectory(QStringLiteral("sub"));
    outside.write(QStringLiteral("sub/a"));

    QVERIFY(QFile::rename(
        outside.path(QStringLiteral("sub")), test.folder.path(QStringLiteral("sub"))));
    test.folder.write(QStringLiteral("new"));
    test.manager.readEvents();
    test.manager.runToIdle();

    QCOMPARE(test.database.directoryPaths(), QStringList(test.folder.path()));
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new")));
}

void ChangeEventsTest::directoryThatIsGoneLosesItsRows_data()
{
    QTest::addColumn<bool>("isMoved");
    QTest::newRow("removed") << false;
    QTest::newRow("renamed") << true;
}

void ChangeEventsTest::directoryThatIsGoneLosesItsRows()
{
    QFETCH(bool, isMoved);
    MessageLog log;
    WatchedFolder test;
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.write(QStringLiteral("sub/a"));
    test.manager.readEvents();
    test.manager.runToIdle();
    QCOMPARE(test.manager.watchMasks().size(), 2);

    if (isMoved) {
        test.folder.rename(QStringLiteral("sub"), QStringLiteral("renamed"));
    } else {
        test.folder.removeTree(QStringLiteral("sub"));
    }
    test.manager.readEvents();

    QCOMPARE(test.database.directoryPaths(), QStringList(test.folder.path()));
    QCOMPARE(
        test.database.value(QStringLiteral("SELECT count(*) FROM file;")),
        QVariant(KnownFiles.size()));
    QCOMPARE(test.manager.watchMasks().size(), 1);
    // The kernel's message about the removed watch changes nothing more.
    test.manager.readEvents();
    QCOMPARE(test.fileNames(), KnownFiles);
}

void ChangeEventsTest::rootThatIsDeletedLosesItsRow()
{
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("root"));
    folder.write(QStringLiteral("root/a"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    manager.appendDirectory(folder.path(QStringLiteral("root")), FileManager::RemovalsOnly, true);
    manager.runToIdle();
    QCOMPARE(database.directoryPaths(), QStringList(folder.path(QStringLiteral("root"))));

    folder.removeTree(QStringLiteral("root"));
    manager.readEvents();

    QCOMPARE(database.directoryPaths(), QStringList());
}

void ChangeEventsTest::scopeDecidesWhatIsSeen_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<bool>("seesNew");
    QTest::addColumn<bool>("seesChanged");
    QTest::newRow("all entries") << 0 << true << true;
    QTest::newRow("known entries") << 1 << false << true;
    QTest::newRow("removals only") << 2 << false << false;
}

void ChangeEventsTest::scopeDecidesWhatIsSeen()
{
    QFETCH(int, scope);
    QFETCH(bool, seesNew);
    QFETCH(bool, seesChanged);
    MessageLog log;
    WatchedFolder test(scope);

    test.folder.write(QStringLiteral("new"));
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.write(QStringLiteral("known"), "changed");
    test.folder.remove(QStringLiteral("other"));
    test.manager.readEvents();

    QStringList expected{QStringLiteral("known")};
    if (seesNew) {
        expected.append(QStringLiteral("new"));
    }
    QCOMPARE(test.fileNames(), expected);
    QCOMPARE(test.database.directoryPaths().size(), seesNew ? 2 : 1);
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(seesChanged ? 0 : 1));
}

void ChangeEventsTest::eventsOfClearedWatchesAreSkipped()
{
    MessageLog log;
    WatchedFolder test;

    test.folder.write(QStringLiteral("new"));
    test.folder.remove(QStringLiteral("known"));
    test.manager.clearWatches();
    test.manager.readEvents();

    QCOMPARE(test.fileNames(), KnownFiles);
}

void ChangeEventsTest::droppedEventsChangeNothing()
{
    MessageLog log;
    WatchedFolder test;
    QFile limit(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    QVERIFY(limit.open(QIODevice::ReadOnly));
    const int queueLength = limit.readAll().trimmed().toInt();
    QVERIFY(queueLength > 0);
    QFile known(test.folder.path(QStringLiteral("known")));
    QFile other(test.folder.path(QStringLiteral("other")));
    QVERIFY(known.open(QIODevice::Append | QIODevice::Unbuffered));
    QVERIFY(other.open(QIODevice::Append | QIODevice::Unbuffered));
    // The events alternate, because the kernel joins equal events in a row.
    for (int i = 0; i <= queueLength / 2; ++i) {
        known.write("x");
        other.write("x");
    }
    test.folder.write(QStringLiteral("lost"));

    test.manager.readEvents();
    test.manager.runToIdle();

    QCOMPARE(test.fileNames(), KnownFiles);
    QCOMPARE(test.metadataCurrent(QStringLiteral("known")), QVariant(0));
}

void ChangeEventsTest::readOfNothingDoesNotBlockAndStillUpdates()
{
    MessageLog log;
    WatchedFolder test;

    test.manager.readEvents();

    QVERIFY(test.manager.step());
    QVERIFY(!test.database.isInTransaction());
}

void ChangeEventsTest::failedBatchLosesAllChangesOfTheRead_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("statement");
    QTest::newRow("m_fileMonitorUpdate")
        << QStringLiteral("UPDATE") << QStringLiteral("file")
        << QStringLiteral("Failed to execute m_fileMonitorUpdate.")
        << QStringLiteral("UPDATE file SET modificationTime = ?, metadataCurrent = 0 "
                          "WHERE directoryId = ? AND fileName = ?;");
    QTest::newRow("m_fileInsert") << QStringLiteral("INSERT") << QStringLiteral("file")
                                  << QStringLiteral("Failed to execute m_fileInsert.")
                                  << FileInsert;
    QTest::newRow("m_directoryInsert")
        << QStringLiteral("INSERT") << QStringLiteral("directory")
        << QStringLiteral("Failed to execute m_directoryInsert.")
        << QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, 0);");
    QTest::newRow("m_fileMonitorDelete")
        << QStringLiteral("DELETE") << QStringLiteral("file")
        << QStringLiteral("Failed to execute m_fileMonitorDelete.")
        << QStringLiteral("DELETE FROM file WHERE directoryId = ? AND fileName = ?;");
    QTest::newRow("m_directoryDelete") << QStringLiteral("DELETE") << QStringLiteral("directory")
                                       << QStringLiteral("Failed to execute m_directoryDelete.")
                                       << QStringLiteral("DELETE FROM directory WHERE id = ?;");
}

void ChangeEventsTest::failedBatchLosesAllChangesOfTheRead()
{
    QFETCH(QString, operation);
    QFETCH(QString, table);
    QFETCH(QString, message);
    QFETCH(QString, statement);
    MessageLog log;
    WatchedFolder test;
    test.folder.makeDirectory(QStringLiteral("gone"));
    test.manager.readEvents();
    test.manager.runToIdle();
    const QString files = QStringLiteral("SELECT * FROM file ORDER BY id;");
    const QString directories = QStringLiteral("SELECT * FROM directory ORDER BY id;");
    const LibraryDatabase::Rows filesBefore = test.database.rows(files);
    const LibraryDatabase::Rows directoriesBefore = test.database.rows(directories);
    test.database.exec(refuse(operation, table));

    test.folder.write(QStringLiteral("known"), "changed");
    test.folder.write(QStringLiteral("new"));
    test.folder.makeDirectory(QStringLiteral("sub"));
    test.folder.remove(QStringLiteral("other"));
    test.folder.remove(QStringLiteral("gone"));
    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), queryWarnings(ReadEvent, message, refusedError(), statement));
    QCOMPARE(test.database.rows(files), filesBefore);
    QCOMPARE(test.database.rows(directories), directoriesBefore);
    QVERIFY(!test.database.isInTransaction());
    QVERIFY(!test.manager.step());
}

void ChangeEventsTest::failedCommitIsReportedAndLeavesTheRows()
{
    MessageLog log;
    WatchedFolder test;
    test.database.exec(refuseCommit(QStringLiteral("INSERT"), QStringLiteral("file")));
    test.folder.write(QStringLiteral("new"));
    test.folder.remove(QStringLiteral("other"));

    test.manager.readEvents();

    QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(ReadEvent)));
    QCOMPARE(test.fileNames(), KnownFiles);
    QVERIFY(!test.database.isInTransaction());
    QVERIFY(!test.manager.step());
}

void ChangeEventsTest::nextReadAfterAFailureStartsAfresh()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.remove(QStringLiteral("known"));
    test.folder.write(QStringLiteral("known"));
    test.manager.readEvents();
    QCOMPARE(log.takeWarnings(), nameTaken());

    test.folder.write(QStringLiteral("new"));
    test.manager.readEvents();

    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new")));
}

void ChangeEventsTest::readInsideATransactionIsReportedAndGoesOn()
{
    MessageLog log;
    WatchedFolder test;
    test.folder.write(QStringLiteral("new"));
    QVERIFY(test.database.connection().transaction());

    test.manager.readEvents();

    const QStringList expected{
        ReadEvent, QStringLiteral("Failed to start transation"),
        QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                       "\"cannot start a transaction within a transaction\")")};
    QCOMPARE(log.takeWarnings(), expected);
    QCOMPARE(test.fileNames(), withKnownFiles(QStringLiteral("new")));
    QVERIFY(!test.database.isInTransaction());
    QVERIFY(test.manager.step());
}

void ChangeEventsTest::filesAreAnnounced()
{
    MessageLog log;
    WatchedFolder test;
    const Announcements announcements;
    test.folder.write(QStringLiteral("new"));

    test.manager.readEvents();

    QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::File});
}

void ChangeEventsTest::failedReadIsNotAnnounced()
{
    MessageLog log;
    WatchedFolder test;
    const Announcements announcements;
    test.database.exec(refuse(QStringLiteral("INSERT"), QStringLiteral("file")));

    test.folder.write(QStringLiteral("new"));
    test.manager.readEvents();

    QCOMPARE(log.takeWarnings().size(), 4);
    QCOMPARE(Announcements::take(), QVector<int>());
}

QTEST_GUILESS_MAIN(ChangeEventsTest)

#include "tst_changeevents.moc"
