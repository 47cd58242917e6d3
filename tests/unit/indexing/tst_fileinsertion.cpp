// SPDX-License-Identifier: BSD-3-Clause
// Tests how FileManager registers single files.
#include "indexing/filemanager.h"

#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "refusedcommit.h"
#include "testfolder.h"

#include <QTest>

namespace {

const QString InsertFile = QStringLiteral("qint64 FileManager::insertFile(const QString&)");
const QString DirectoryIdQuery = QStringLiteral("SELECT id, scope FROM directory WHERE path = ?;");
const QString DirectoryAppend = QStringLiteral("INSERT INTO directory (path, scope) VALUES(?, ?);");
constexpr uint KnownEntriesMask = 0xe42;

} // namespace

class FileInsertionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void nameThatTheDatabaseWouldChangeIsNotInserted_data();
    void nameThatTheDatabaseWouldChangeIsNotInserted();
    void insertingReportsAFailedCommit();
    void insertingInsideATransactionCommitsIt();
};

void FileInsertionTest::insertingAMissingFileDoesNothing()
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

void FileInsertionTest::insertingRegistersTheFileAndItsDirectory()
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

void FileInsertionTest::insertingKeepsTheScopeOfAKnownDirectory()
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

void FileInsertionTest::insertingAKnownFileChangesNothing()
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

void FileInsertionTest::insertingCleansThePath()
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

void FileInsertionTest::insertingKeepsOddNames_data()
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

void FileInsertionTest::insertingKeepsOddNames()
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

void FileInsertionTest::insertingAFifoDoesNotBlock()
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

void FileInsertionTest::insertingGetsANewDirectoryWatched()
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

void FileInsertionTest::insertingIntoAWatchedDirectoryScansNothing()
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

void FileInsertionTest::insertingReportsAFailedDirectoryLookup()
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

void FileInsertionTest::insertingReportsAFailedDirectoryInsert()
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

void FileInsertionTest::insertingReportsAFailedFileLookupAndRollsBack()
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
    // The directory is in the queue anyway. It has no row, so it is dropped without a message.
    QCOMPARE(manager.runToIdle(), 1);
    QCOMPARE(manager.watchMasks(), QVector<uint>());
}

void FileInsertionTest::insertingReportsAFailedFileInsertAndRollsBack()
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

void FileInsertionTest::nameThatTheDatabaseWouldChangeIsNotInserted_data()
{
    addUnstorableNames();
    QTest::newRow("a folder") << QStringLiteral("sub\uffff/a.jpg");
}

void FileInsertionTest::nameThatTheDatabaseWouldChangeIsNotInserted()
{
    QFETCH(QString, name);
    MessageLog log;
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("sub\uffff"));
    folder.write(QStringLiteral("a.jpg"));
    folder.write(name);
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    QVERIFY(manager.insertFile(folder.path(QStringLiteral("a.jpg"))) > 0);
    manager.runToIdle();

    QCOMPARE(manager.insertFile(folder.path(name)), qint64(0));

    QCOMPARE(log.takeWarnings(), QStringList(unstorableWarning(InsertFile, folder.path(name))));
    QCOMPARE(database.fileNames(folder.path()), QStringList(QStringLiteral("a.jpg")));
    QCOMPARE(database.directoryPaths(), QStringList(folder.path()));
    QVERIFY(!manager.step());
}

void FileInsertionTest::insertingReportsAFailedCommit()
{
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"));
    IndexDatabase database;
    DrivenFileManager manager(database.connection());
    database.exec(refuseCommit(QStringLiteral("INSERT"), QStringLiteral("file")));

    QCOMPARE(manager.insertFile(folder.path(QStringLiteral("a.jpg"))), qint64(0));

    QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(InsertFile)));
    QVERIFY(!database.isInTransaction());
    QCOMPARE(database.directoryPaths(), QStringList());
}

void FileInsertionTest::insertingInsideATransactionCommitsIt()
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

QTEST_GUILESS_MAIN(FileInsertionTest)

#include "tst_fileinsertion.moc"
