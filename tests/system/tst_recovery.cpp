// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "installedbundles.h"
#include "librarylock.h"
#include "picturefile.h"

#include <QDir>
#include <QSqlQuery>
#include <QTest>

#include <csignal>

/// Tests how a daemon handles the library of an earlier daemon, and a full disk.
class RecoveryTest : public QObject
{
    Q_OBJECT

private:
    const QSize m_size{3, 2};

    /// Fills the pictures folder with several equal directories of pictures.
    static bool writePictures(const UserFolders& folders, int folderCount, int picturesPerFolder)
    {
        const QString original = folders.elsewhere(QStringLiteral("original.png"));
        bool written = writePicture(original, QSize(3, 2));
        for (int folder = 0; folder < folderCount; ++folder) {
            const QDir directory(folders.picture(QStringLiteral("folder %1").arg(folder)));
            written = written && directory.mkpath(QStringLiteral("."));
            for (int picture = 0; picture < picturesPerFolder; ++picture) {
                written = written
                    && QFile::copy(
                              original, directory.filePath(QStringLiteral("%1.png").arg(picture)));
            }
        }
        return written;
    }

    static bool writeFile(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    static bool executeOnDatabase(const QString& statement)
    {
        const QString name = QStringLiteral("damage");
        bool executed = false;
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            database.setDatabaseName(LibraryDatabase::standardPath());
            executed = database.open() && QSqlQuery(database).exec(statement);
        }
        QSqlDatabase::removeDatabase(name);
        return executed;
    }

    static QString dataFolder()
    {
        return QFileInfo(LibraryDatabase::standardPath()).path() + QLatin1Char('/');
    }

    /// The log messages about a database that is deleted.
    static QStringList removalWarnings()
    {
        return {
            QStringLiteral("DbManager::DbManager() Nuking moodset database due previous errors!"),
            QStringLiteral("Delete:  \"%1\"").arg(dataFolder())};
    }

    static QString failedCommit(const QString& function)
    {
        return function
            + QStringLiteral(" Failed to commit transaction QSqlError(\"\", \"Unable to commit "
                             "transaction\", \"database or disk is full\")");
    }

    static QString schemaFailure()
    {
        return QStringLiteral("DbManager::DbManager: Failed to create DB schema. Can't continue!");
    }

    /// The number of tables, indexes and triggers of the database, out of 13.
    static int madeObjects(DaemonSession& session)
    {
        return count(
            session,
            QStringLiteral("sqlite_master WHERE sql IS NOT NULL AND name <> 'sqlite_sequence'"));
    }

    static int count(DaemonSession& session, const QString& table)
    {
        return session.library()
            .value(QStringLiteral("SELECT count(*) FROM %1").arg(table))
            .toInt();
    }

    /// Kills the daemon while a write is blocked, after the table has got rows.
    static bool killOnceFilled(DaemonSession& session, const QString& table)
    {
        if (!QTest::qWaitFor(
                [&] { return count(session, table) > 0; }, DaemonProcess::deadlineMs)) {
            return false;
        }
        const LibraryLock lock;
        return lock.isHeld() && session.daemon.kill();
    }

private Q_SLOTS:
    void completesAScanThatWasKilled()
    {
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 1500, 2));
        QVERIFY(session.startOnBus());

        QVERIFY(killOnceFilled(session, QStringLiteral("file")));
        const int filesAtTheKill = count(session, QStringLiteral("file"));
        QVERIFY(filesAtTheKill > 0 && filesAtTheKill < 3000);
        QCOMPARE(count(session, QStringLiteral("image")), 0);
        QVERIFY(session.start());

        QCOMPARE(session.libraryFiles(), session.diskFiles());
        QCOMPARE(count(session, QStringLiteral("file")), 3000);
        QCOMPARE(count(session, QStringLiteral("image")), 3000);
        QCOMPARE(session.libraryDirectories().count(), 1501);
    }

    void completesAMetadataPassThatWasKilled()
    {
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 3, 1000));
        QVERIFY(session.startOnBus());

        QVERIFY(killOnceFilled(session, QStringLiteral("image")));
        QCOMPARE(count(session, QStringLiteral("file")), 3000);
        const int picturesAtTheKill = count(session, QStringLiteral("image"));
        QVERIFY(picturesAtTheKill > 0 && picturesAtTheKill < 3000);
        QCOMPARE(picturesAtTheKill % 100, 0);
        QVERIFY(session.start());

        QCOMPARE(count(session, QStringLiteral("image")), 3000);
        QCOMPARE(
            session.library()
                .value(QStringLiteral("SELECT count(*) FROM image WHERE width = 3 AND height = 2"))
                .toInt(),
            3000);
    }

    void bringsTheTreeInLineThatChangedAfterAKill()
    {
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 10, 10));
        QVERIFY(session.start());

        QVERIFY(session.daemon.kill());
        QCOMPARE(session.daemon.exitCode(), SIGKILL);
        QVERIFY(QDir(session.folders.picture(QStringLiteral("folder 3"))).removeRecursively());
        QVERIFY(
            writePicture(session.folders.picture(QStringLiteral("folder 5/3.png")), QSize(7, 8)));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("folder 5/new.png")), m_size));
        QVERIFY(session.start());

        QCOMPARE(
            session.pictureSize(session.folders.picture(QStringLiteral("folder 5/3.png"))),
            QSize(7, 8));
        QCOMPARE(count(session, QStringLiteral("file")), 91);
        QCOMPARE(session.libraryDirectories().count(), 10);
    }

    void completesADatabaseWhoseFirstStartWasKilled_data()
    {
        QTest::addColumn<int>("kibibytes");
        // Each table and each index begins a page of 4 KiB. What comes after them, up to the rows
        // of the pictures, goes into the write-ahead log.
        for (int kibibytes = 4; kibibytes <= 80; kibibytes += 4) {
            QTest::addRow("at %d KiB", kibibytes) << kibibytes;
        }
    }

    void completesADatabaseWhoseFirstStartWasKilled()
    {
        QFETCH(int, kibibytes);
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 2, 20));
        DaemonProcess killed;
        killed.limitFileSize(kibibytes * 1024LL);

        QVERIFY(killed.start());
        QVERIFY(killed.waitForEnd());
        QCOMPARE(killed.exitStatus(), QProcess::CrashExit);
        QCOMPARE(killed.exitCode(), SIGXFSZ);
        QVERIFY(session.start());

        QCOMPARE(session.daemon.takeWarnings(), QStringList());
        QCOMPARE(count(session, QStringLiteral("image")), 40);
        QCOMPARE(madeObjects(session), 13);
    }

    void rebuildsADatabaseOfNoUse_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("firstWarnings");
        const QStringList unreadable{
            QStringLiteral("DbManager::DbManager()"),
            QStringLiteral("Failed to query user version"),
            QStringLiteral(
                "QSqlError(\"26\", \"Unable to fetch row\", \"file is not a database\")")};
        QTest::newRow("empty") << QByteArray()
                               << QStringList{
                                      QStringLiteral("Database version outdated or non-existent")};
        QTest::newRow("garbage") << QByteArray(10000, 'x') << unreadable;
        QTest::newRow("zeros") << QByteArray(10000, '\0') << unreadable;
        QTest::newRow("a picture of its header")
            << QByteArray("SQLite format 3").leftJustified(10000, '\xff') << unreadable;
    }

    void rebuildsADatabaseOfNoUse()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, firstWarnings);
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 2, 2));
        QVERIFY(QDir().mkpath(dataFolder()));
        QVERIFY(writeFile(LibraryDatabase::standardPath(), content));

        QVERIFY(session.start());

        QCOMPARE(session.daemon.takeWarnings(), firstWarnings + removalWarnings());
        QCOMPARE(count(session, QStringLiteral("image")), 4);
        QCOMPARE(session.library().value(QStringLiteral("PRAGMA user_version")).toInt(), 10);
    }

    void rebuildsADatabaseOfAnUnknownVersion_data()
    {
        QTest::addColumn<int>("version");
        for (const int version : {0, 1, 6, 11, -1}) {
            QTest::addRow("%d", version) << version;
        }
    }

    void rebuildsADatabaseOfAnUnknownVersion()
    {
        QFETCH(int, version);
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 2, 2));
        QVERIFY(session.start());
        BusClient::call(
            QStringLiteral("saveAttributes"),
            {4, 1LL, QVariantMap{{QStringLiteral("source"), QStringLiteral("http://host/")}}});
        QVERIFY(session.daemon.terminate());
        QVERIFY(executeOnDatabase(QStringLiteral("PRAGMA user_version = %1").arg(version)));

        QVERIFY(session.start());

        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList{QStringLiteral("Database version outdated or non-existent")}
                + removalWarnings());
        QCOMPARE(count(session, QStringLiteral("image")), 4);
        QCOMPARE(count(session, QStringLiteral("download")), 0);
    }

    void answersWithADirectoryInTheDatabasesPlace()
    {
        DaemonSession session;
        QVERIFY(writePictures(session.folders, 1, 1));
        QVERIFY(QDir().mkpath(LibraryDatabase::standardPath()));

        QVERIFY(session.startOnBus());

        QVERIFY(BusClient::isAnswered());
        const QStringList warnings = session.daemon.takeWarnings();
        QCOMPARE(warnings.filter(removalWarnings().constFirst()).count(), 2);
        QCOMPARE(warnings.filter(schemaFailure()), QStringList{schemaFailure()});
        QVERIFY(session.daemon.lines().contains(
            QStringLiteral("debug: DbManager::DbManager() Moodset DB Fine...")));
    }

    void goesOnAfterTheDiskWasFull()
    {
        DaemonSession session;
        SmallDisk disk;
        QVERIFY(disk.take(session));
        QVERIFY(session.start());
        QVERIFY(disk.fill());
        const QVariantMap source{{QStringLiteral("source"), QStringLiteral("http://host/")}};

        QVERIFY(writePictures(session.folders, 10, 100));
        BusClient::call(QStringLiteral("saveAttributes"), {4, 1LL, source});
        QVERIFY(BusClient::isAnswered());
        const QStringList warnings{
            QStringLiteral("bool DownloadManager::create(qint64, QUrl)"),
            QStringLiteral("Failed to execute m_insertDownload."),
            QStringLiteral("QSqlError(\"13\", \"Unable to fetch row\", \"database or disk is "
                           "full\")"),
            QStringLiteral("\"INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);\"")};
        QStringList logged = session.daemon.takeWarnings();
        // There is one warning for each group of changes that the daemon has read at once.
        QVERIFY(
            logged.removeAll(failedCommit(QStringLiteral("bool FileManager::readEvent()"))) > 0);
        QCOMPARE(logged, warnings);
        QVERIFY(session.libraryFiles() != session.diskFiles());

        QVERIFY(disk.clear());
        QVERIFY(session.waitUntilFollowed());
        BusClient::call(QStringLiteral("saveAttributes"), {4, 1LL, source});
        QCOMPARE(count(session, QStringLiteral("download")), 1);
        QVERIFY(session.restart());
        QCOMPARE(count(session, QStringLiteral("image")), 1001);
    }

    void saysThatAnEditIsLostOnAFullDisk()
    {
        DaemonSession session;
        SmallDisk disk;
        QVERIFY(disk.take(session));
        const InstalledBundles bundles(session.folders);
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());
        const QString path =
            InstalledBundles::folder() + QStringLiteral("coast-light/coast-light.moodset");
        const QString column = QStringLiteral("ringerVolume");
        const QVariantList edit{1, session.fileId(path), QVariantMap{{column, 7}}};
        const QStringList former = session.library().moodset(path, column);
        QVERIFY(!former.isEmpty());
        QVERIFY(disk.fill());

        BusClient::call(QStringLiteral("saveAttributes"), edit);

        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(failedCommit(
                QStringLiteral("virtual bool MoodsetManager::save(qint64, const QVariantMap&)"))));
        QCOMPARE(session.library().moodset(path, column), former);
        QVERIFY(disk.clear());
        BusClient::call(QStringLiteral("saveAttributes"), edit);
        QCOMPARE(session.library().moodset(path, column), QStringList(QStringLiteral("7")));
    }

    void comesToRestOnAFullDisk()
    {
        DaemonSession session;
        SmallDisk disk;
        QVERIFY(disk.take(session));
        const InstalledBundles bundles(session.folders);
        QVERIFY(session.startAtRest());
        QVERIFY(session.daemon.kill());
        QVERIFY(writePictures(session.folders, 10, 10));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("first-snow")));
        QVERIFY(disk.fill());
        const int linesBefore = session.daemon.lines().size();

        QVERIFY(session.startOnBus());
        QVERIFY(QTest::qWaitFor(
            [&] {
                const QStringList lines = session.daemon.lines().mid(linesBefore);
                return !lines.filter(QStringLiteral("FileManager idle")).isEmpty()
                    && !lines.filter(QStringLiteral("InstallManager idle")).isEmpty();
            },
            DaemonProcess::deadlineMs));

        const QStringList warnings = session.daemon.takeWarnings();
        for (const char* const function :
             {"bool FileManager::scanDirectory()", "bool InstallManager::scanInstallDirectory()"}) {
            QCOMPARE(warnings.count(failedCommit(QLatin1String(function))), 1);
        }
        // The packages cannot be inserted one by one either.
        QCOMPARE(warnings.count(QStringLiteral("Failed to execute m_directoryAppend")), 2);
        QCOMPARE(warnings.size(), 2 + 2 * 4);
        // The daemon does not try again and again: it logs nothing while calls arrive.
        const int linesAtRest = session.daemon.lines().size();
        for (int i = 0; i < 50; ++i) {
            QVERIFY(BusClient::isAnswered());
        }
        QCOMPARE(session.daemon.lines().size(), linesAtRest);

        QVERIFY(session.daemon.terminate());
        QVERIFY(disk.clear());
        QVERIFY(session.startAtRest());
        QCOMPARE(count(session, QStringLiteral("moodset")), 2);
        // This includes the two pictures with which startAtRest() works, and its picture may not be
        // the last one that is read.
        QTRY_COMPARE_WITH_TIMEOUT(
            count(session, QStringLiteral("image")), 102, DaemonProcess::deadlineMs);
    }

    void answersAfterAStartOnAFullDisk()
    {
        DaemonSession session;
        SmallDisk disk;
        QVERIFY(disk.take(session));
        QVERIFY(disk.fill());
        QVERIFY(writePictures(session.folders, 1, 10));

        QVERIFY(session.startOnBus());
        QVERIFY(BusClient::isAnswered());
        const QStringList warnings = session.daemon.takeWarnings();
        QCOMPARE(warnings.filter(schemaFailure()), (QStringList{schemaFailure(), schemaFailure()}));
        QCOMPARE(
            warnings.filter(removalWarnings().constLast()),
            (QStringList{removalWarnings().constLast(), removalWarnings().constLast()}));
        QVERIFY(session.daemon.terminate());

        QVERIFY(disk.clear());
        QVERIFY(session.start());
        QCOMPARE(count(session, QStringLiteral("image")), 10);
    }

    void completesADatabaseThatAFullDiskHasCutShort_data()
    {
        QTest::addColumn<int>("kibibytes");
        // After some of these kills, the file has a version, but not all tables.
        for (int kibibytes = 0; kibibytes <= 40; kibibytes += 4) {
            QTest::addRow("%d KiB", kibibytes) << kibibytes;
        }
    }

    void completesADatabaseThatAFullDiskHasCutShort()
    {
        QFETCH(int, kibibytes);
        DaemonSession session;
        SmallDisk disk;
        QVERIFY(disk.take(session));
        QVERIFY(disk.fill(qint64(kibibytes) * 1024));
        QVERIFY(writePictures(session.folders, 1, 10));
        QVERIFY(session.startOnBus());
        QVERIFY(BusClient::isAnswered());
        QVERIFY(session.daemon.terminate());
        QVERIFY(session.daemon.takeWarnings().contains(schemaFailure()));

        QVERIFY(disk.clear());
        QVERIFY(session.start());

        QCOMPARE(session.daemon.takeWarnings(), QStringList());
        QCOMPARE(madeObjects(session), 13);
        QCOMPARE(count(session, QStringLiteral("image")), 10);
    }

private:
    /// Puts a user's data on the small file system of the private machine.
    class SmallDisk
    {
    public:
        SmallDisk()
            : m_root(qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK"))
        {
        }

        ~SmallDisk()
        {
            clear();
            QDir(data()).removeRecursively();
        }

        Q_DISABLE_COPY_MOVE(SmallDisk)

        /// Moves the data of this process's user and of the session's daemon to the disk.
        bool take(DaemonSession& session)
        {
            session.daemon.setEnvironment(QStringLiteral("XDG_DATA_HOME"), data());
            qputenv("XDG_DATA_HOME", QFile::encodeName(data()));
            return !m_root.isEmpty() && QDir().mkpath(data());
        }

        /// Uses all space that is left, except for this many bytes.
        bool fill(qint64 spared = 0)
        {
            QFile ballast(ballastPath());
            if (!ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
                return false;
            }
            const QByteArray block(4096, 'x');
            while (ballast.write(block) > 0) { }
            return (ballast.error() == QFile::ResourceError || ballast.error() == QFile::WriteError)
                && ballast.resize(ballast.size() - spared);
        }

        bool clear() { return QFile::remove(ballastPath()); }

    private:
        QString data() const { return m_root + QStringLiteral("/data"); }
        QString ballastPath() const { return m_root + QStringLiteral("/ballast"); }

        QString m_root;
    };
};

QTEST_GUILESS_MAIN(RecoveryTest)

#include "tst_recovery.moc"
