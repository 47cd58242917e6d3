// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/colorstring.h"
#include "content/libraryreader.h"
#include "content/moodsetlist.h"
#include "contentwriter.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QVariant>

/// A database with the tables that the client reads, and a few rows.
class LibraryReaderTest : public QObject
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
        execute("CREATE TABLE moodset (fileId INTEGER PRIMARY KEY, favorite INTEGER)");
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
        LibraryReader library(m_path);
        QVERIFY(library.open());

        const QVector<LibraryFile> photos = library.photos();

        QCOMPARE(library.error(), QString());
        QCOMPARE(photos.count(), 3);
        QCOMPARE(photos.at(0).path, QStringLiteral("/a/waiting.png"));
        QCOMPARE(photos.at(0).current, false);
        QCOMPARE(photos.at(1).path, QStringLiteral("/b/broken.jpg"));
        QCOMPARE(photos.at(1).isReadable(), false);
        const LibraryFile& full = photos.at(2);
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
        LibraryReader library(m_path);
        QVERIFY(library.open());

        const std::optional<LibraryFile> words = library.findFile(QStringLiteral("/b/words.txt"));

        QVERIFY(words.has_value());
        QCOMPARE(words->mimeType, QStringLiteral("text/plain"));
        QVERIFY(!library.findFile(QStringLiteral("/a/words.txt")).has_value());
        QCOMPARE(library.error(), QString());
    }

    void countsRows()
    {
        LibraryReader library(m_path);
        QVERIFY(library.open());

        const LibraryReader::Counts counts = library.counts();

        QCOMPARE(counts.files, 4);
        QCOMPARE(counts.folders, 2);
        QCOMPARE(counts.photos, 3);
        QCOMPARE(counts.waitingPhotos, 1);
    }

    void countsFoldersThatTakeNewFilesAndFoldersOfPictures()
    {
        execute("INSERT INTO directory VALUES (3, '/taking', 0), (4, '/known', 1),"
                " (5, '/package', 2)");
        LibraryReader library(m_path);
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
        LibraryReader library(m_path);
        QVERIFY(library.open());

        QCOMPARE(library.counts().files, 4);
    }

    void dataVersionTellsOfWrites()
    {
        LibraryReader library(m_path);
        QVERIFY(library.open());
        const int before = library.dataVersion();
        QCOMPARE(library.dataVersion(), before);

        execute("DELETE FROM image");

        QVERIFY(library.dataVersion() != before);
    }

    void listsMoodsetsAsTheAgentDoes()
    {
        const QString path = m_folder.filePath(QStringLiteral("agent/moodsetd.sqlite"));
        ContentWriter writer(path);
        const auto add = [&writer](const char* file, bool favorite, const char* timestamp) {
            return writer.addMoodset(
                QLatin1String(file),
                {{QStringLiteral("favorite"), favorite},
                 {QStringLiteral("timestamp"), QLatin1String(timestamp)},
                 {QStringLiteral("highlightColor"), QStringLiteral("#ff102030")},
                 {QStringLiteral("ringerVolume"), 40}});
        };
        add("/a/plain.moodset", false, "2026-01-01T00:00:00Z");
        const qint64 late = add("/a/late.moodset", true, "2026-03-01T00:00:00Z");
        add("/a/early.moodset", true, "2026-02-01T00:00:00Z");
        writer.addResource(
            late, QStringLiteral("ringerToneFile"), QStringLiteral("/a/sounds/b.ogg"));
        LibraryReader library(path);
        QVERIFY(library.open());

        const QVector<Moodset> moodsets = library.moodsets();

        QCOMPARE(library.error(), QString());
        QCOMPARE(moodsets.size(), 3);
        QCOMPARE(moodsets.at(0)->fileName, QStringLiteral("early.moodset"));
        QCOMPARE(moodsets.at(1)->fileName, QStringLiteral("late.moodset"));
        QCOMPARE(moodsets.at(2)->url, QUrl(QStringLiteral("file:///a/plain.moodset")));
        QCOMPARE(moodsets.at(1)->timestamp, QDateTime(QDate(2026, 3, 1), QTime(0, 0), Qt::UTC));
        QCOMPARE(moodsets.at(1)->highlightColor, QColor(QStringLiteral("#102030")));
        QCOMPARE(moodsets.at(1)->ringerVolume, 40);
        QVERIFY(moodsets.at(1)->favorite);
        QVERIFY(moodsets.at(1)->resources.isEmpty());
        QVERIFY(library.moodset(late)->resources.contains(QStringLiteral("ringerToneFile")));
        QCOMPARE(library.moodset(QUrl(QStringLiteral("file:///a/late.moodset")))->id, late);
        QCOMPARE(library.counts().moodsets, 3);
        QCOMPARE(library.counts().favorites, 2);
    }

    void theListForPeopleHasTheSameMoodsets()
    {
        const QString path = m_folder.filePath(QStringLiteral("list/moodsetd.sqlite"));
        ContentWriter writer(path);
        QVERIFY(!readMoodsetList(m_folder.filePath(QStringLiteral("none.sqlite"))));
        const auto add = [&writer](const char* file, bool favorite, const char* color) {
            const QString text = QLatin1String(color);
            writer.addMoodset(
                QLatin1String(file),
                {{QStringLiteral("favorite"), favorite},
                 {QStringLiteral("timestamp"), QStringLiteral("2026-01-01T00:00:00Z")},
                 {QStringLiteral("primaryColor"), text},
                 {QStringLiteral("secondaryColor"), QStringLiteral("#ff000001")},
                 {QStringLiteral("highlightColor"), QStringLiteral("#ff000002")},
                 {QStringLiteral("secondaryHighlightColor"), QStringLiteral("#ff000003")}});
        };
        add("/a/a name.moodset", false, "palegreen");
        add("/a/no color.moodset", false, "");
        add("/a/favorite.moodset", true, "#80102030");
        writer.exec(QStringLiteral("UPDATE file SET displayName = 'Coast' WHERE fileName = "
                                   "'favorite.moodset'"));
        LibraryReader library(path);
        QVERIFY(library.open());
        const QVector<Moodset> moodsets = library.moodsets();
        QCOMPARE(moodsets.size(), 3);

        const std::optional<QVector<ListedMoodset>> list = readMoodsetList(path);

        QVERIFY(list);
        QCOMPARE(list->size(), moodsets.size());
        for (int i = 0; i < moodsets.size(); ++i) {
            const ListedMoodset& listed = list->at(i);
            const Moodset& moodset = moodsets.at(i);
            QCOMPARE(listed.id, moodset->id);
            QCOMPARE(listed.displayName, moodset->displayName);
            QCOMPARE(listed.path, moodset->url.toLocalFile());
            QCOMPARE(listed.favorite, moodset->favorite);
            QCOMPARE(colorFromString(listed.primaryColor), moodset->primaryColor);
            QCOMPARE(colorFromString(listed.secondaryColor), moodset->secondaryColor);
            QCOMPARE(colorFromString(listed.highlightColor), moodset->highlightColor);
            QCOMPARE(
                colorFromString(listed.secondaryHighlightColor), moodset->secondaryHighlightColor);
        }
        QCOMPARE(list->at(0).displayName, QStringLiteral("Coast"));
        QCOMPARE(list->at(1).primaryColor, QStringLiteral("palegreen"));
    }

    void tellsOfDirectoriesDownloadsAndTheSchema()
    {
        const QString path = m_folder.filePath(QStringLiteral("rest/moodsetd.sqlite"));
        ContentWriter writer(path);
        const qint64 file = writer.addPhoto(QStringLiteral("/a/online_img0.jpg"));
        writer.setSource(file, QStringLiteral("http://example.org/a.jpg"));
        writer.exec(
            QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (77, '/a/b', 1)"));
        LibraryReader library(path);
        QVERIFY(library.open());

        const QVector<LibraryReader::Directory> directories = library.directories();

        QCOMPARE(directories.size(), 2);
        QCOMPARE(directories.at(0).path, QStringLiteral("/a"));
        QCOMPARE(directories.at(0).parentId, 0);
        QCOMPARE(directories.at(1).parentId, 77);
        QCOMPARE(directories.at(1).scope, int(LibraryReader::Directory::KnownEntries));
        QCOMPARE(
            library.downloads().value(QStringLiteral("/a/online_img0.jpg")),
            QStringLiteral("http://example.org/a.jpg"));
        QCOMPARE(library.schemaVersion(), LibraryReader::SchemaVersion);
        QCOMPARE(library.damages(), QStringList());
        QCOMPARE(library.error(), QString());
    }

    void tellsOfDamagedPages()
    {
        const QString path = m_folder.filePath(QStringLiteral("damaged/moodsetd.sqlite"));
        {
            ContentWriter writer(path);
            for (int i = 0; i < 200; ++i) {
                writer.addFile(QStringLiteral("/a/%1.txt").arg(i));
            }
            writer.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
        }
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(file.size() / 2));
        QVERIFY(file.write(QByteArray(3000, 'x')) > 0);
        file.close();
        LibraryReader library(path);
        QVERIFY(library.open());

        const QStringList damages = library.damages();

        QVERIFY(!damages.isEmpty() || !library.error().isEmpty());
    }

    /// The kernel's description of each descriptor that is open on the database's file.
    void hasTheDatabaseOpenForReadingOnly()
    {
        // SQLite keeps a file open while another connection of the process has locked it.
        m_writer.close();
        LibraryReader library(m_path);
        QVERIFY(library.open());
        QCOMPARE(library.photos().count(), 3);

        int descriptors = 0;
        for (const QString& name :
             QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System)) {
            if (QFile::symLinkTarget(QStringLiteral("/proc/self/fd/") + name) != m_path) {
                continue;
            }
            QFile info(QStringLiteral("/proc/self/fdinfo/") + name);
            QVERIFY(info.open(QIODevice::ReadOnly));
            const QByteArray text = info.readAll();
            const int start = text.indexOf("flags:") + 6;
            const int flags =
                text.mid(start, text.indexOf('\n', start) - start).trimmed().toInt(nullptr, 8);
            QCOMPARE(flags & 3, 0);
            ++descriptors;
        }
        QCOMPARE(descriptors, 1);
    }

    void readsADatabaseThatHasBeenReplacedOnceItIsOpenedAgain()
    {
        LibraryReader library(m_path);
        QVERIFY(library.open());
        QCOMPARE(library.photos().count(), 3);
        m_writer.close();
        for (const char* const suffix : {"", "-wal", "-shm"}) {
            QFile::remove(m_path + QLatin1String(suffix));
        }
        ContentWriter(m_path).addPhoto(QStringLiteral("/a/b.jpg"));

        QVERIFY(library.open());

        QCOMPARE(library.photos().count(), 1);
    }

    void reportsAMissingDatabase()
    {
        LibraryReader library(QStringLiteral("/none/moodsetd.sqlite"));

        QVERIFY(!library.open());

        QCOMPARE(library.error(), QStringLiteral("there is no database at /none/moodsetd.sqlite"));
    }

    void reportsADatabaseWithoutTables()
    {
        execute("DROP TABLE file");
        LibraryReader library(m_path);
        QVERIFY(library.open());

        QCOMPARE(library.photos().count(), 0);
        QCOMPARE(
            library.error(), QStringLiteral("no such table: file Unable to execute statement"));
    }
};

QTEST_GUILESS_MAIN(LibraryReaderTest)

#include "tst_libraryreader.moc"
