// SPDX-License-Identifier: BSD-3-Clause
#include "library.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>
#include <QtTest>

/// A database with the tables that the client reads, and a few rows.
class LibraryTest : public QObject
{
    Q_OBJECT

private:
    void execute(const char* statement)
    {
        QSqlQuery query(m_writer);
        QVERIFY2(query.exec(QString::fromUtf8(statement)), statement);
    }

    QTemporaryDir m_folder;
    QString m_path;
    QSqlDatabase m_writer;

private Q_SLOTS:
    void init()
    {
        m_path = m_folder.filePath(QString::fromLatin1(QTest::currentTestFunction()));
        m_writer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
        m_writer.setDatabaseName(m_path);
        QVERIFY(m_writer.open());
        execute("PRAGMA journal_mode = WAL");
        execute("CREATE TABLE directory (id INTEGER PRIMARY KEY, path TEXT, scope INTEGER)");
        execute("CREATE TABLE file (id INTEGER PRIMARY KEY, directoryId INTEGER, mimeType TEXT,"
                " fileName TEXT, modificationTime DATETIME, metadataCurrent BOOL)");
        execute("CREATE TABLE image (fileId INTEGER PRIMARY KEY, dateTaken DATETIME,"
                " width INTEGER, height INTEGER, orientation INTEGER)");
        execute("INSERT INTO directory VALUES (1, '/b', 0), (2, '/a', 1)");
        execute("INSERT INTO file VALUES"
                " (1, 1, 'image/jpeg', 'full.jpg', '2020-02-03T04:05:06.007', 1),"
                " (2, 2, 'image/png', 'waiting.png', '2020-02-03T04:05:06.007', 0),"
                " (3, 1, 'image/jpeg', 'broken.jpg', NULL, 1),"
                " (4, 1, 'text/plain', 'words.txt', NULL, 0)");
        execute("INSERT INTO image VALUES (1, '2019-07-04T12:30:15.250', 40, 30, 6),"
                " (3, NULL, -1, -1, NULL)");
    }

    void cleanup()
    {
        m_writer = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
    }

    void givesPhotosByFolderAndName()
    {
        Library library(m_path);
        QVERIFY(library.open());

        const QVector<Photo> photos = library.photos();

        QCOMPARE(library.error(), QString());
        QCOMPARE(photos.count(), 3);
        QCOMPARE(photos.at(0).path, QStringLiteral("/a/waiting.png"));
        QCOMPARE(photos.at(0).current, false);
        QCOMPARE(photos.at(1).path, QStringLiteral("/b/broken.jpg"));
        QCOMPARE(photos.at(1).isReadable(), false);
        const Photo& full = photos.at(2);
        QCOMPARE(full.path, QStringLiteral("/b/full.jpg"));
        QCOMPARE(full.mimeType, QStringLiteral("image/jpeg"));
        QCOMPARE(full.modified, QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6, 7)));
        QCOMPARE(full.current, true);
        QCOMPARE(full.size, QSize(40, 30));
        QCOMPARE(full.taken, QDateTime(QDate(2019, 7, 4), QTime(12, 30, 15, 250)));
        QCOMPARE(full.orientation, 6);
    }

    void findsFilesOfAnyType()
    {
        Library library(m_path);
        QVERIFY(library.open());

        const std::optional<Photo> words = library.findFile(QStringLiteral("/b/words.txt"));

        QVERIFY(words.has_value());
        QCOMPARE(words->mimeType, QStringLiteral("text/plain"));
        QVERIFY(!library.findFile(QStringLiteral("/a/words.txt")).has_value());
        QCOMPARE(library.error(), QString());
    }

    void countsRows()
    {
        Library library(m_path);
        QVERIFY(library.open());

        const Library::Counts counts = library.counts();

        QCOMPARE(counts.files, 4);
        QCOMPARE(counts.folders, 2);
        QCOMPARE(counts.photos, 3);
        QCOMPARE(counts.waitingPhotos, 1);
    }

    void countsFoldersThatTakeNewFilesAndFoldersOfPictures()
    {
        execute("INSERT INTO directory VALUES (3, '/taking', 0), (4, '/known', 1),"
                " (5, '/package', 2)");
        Library library(m_path);
        QVERIFY(library.open());

        QCOMPARE(library.counts().folders, 3);
        execute("INSERT INTO file (id, directoryId, mimeType) VALUES"
                " (5, 5, 'image/png'), (6, 5, 'image/png'), (7, 4, 'audio/ogg')");
        QCOMPARE(library.counts().folders, 4);
    }

    void countsNoFilesOfMoodsets()
    {
        execute("INSERT INTO directory VALUES (3, '/package', 2)");
        execute("INSERT INTO file (id, directoryId, mimeType) VALUES"
                " (5, 3, 'application/x-zavro-moodset'), (6, 2, 'audio/ogg')");
        Library library(m_path);
        QVERIFY(library.open());

        QCOMPARE(library.counts().files, 4);
    }

    void dataVersionTellsOfWrites()
    {
        Library library(m_path);
        QVERIFY(library.open());
        const int before = library.dataVersion();
        QCOMPARE(library.dataVersion(), before);

        execute("DELETE FROM image");

        QVERIFY(library.dataVersion() != before);
    }

    void reportsAMissingDatabase()
    {
        Library library(QStringLiteral("/none/moodsetd.sqlite"));

        QVERIFY(!library.open());

        QCOMPARE(library.error(), QStringLiteral("there is no database at /none/moodsetd.sqlite"));
    }

    void reportsADatabaseWithoutTables()
    {
        execute("DROP TABLE file");
        Library library(m_path);
        QVERIFY(library.open());

        QCOMPARE(library.photos().count(), 0);
        QCOMPARE(
            library.error(), QStringLiteral("no such table: file Unable to execute statement"));
    }
};

QTEST_GUILESS_MAIN(LibraryTest)

#include "tst_library.moc"
