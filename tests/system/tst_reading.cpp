// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/queryagentdatabase.h"
#include "daemonprocess.h"
#include "messagelog.h"
#include "picturefile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <functional>
#include <thread>

namespace {

constexpr int Pictures = 60;

void runInThread(const std::function<void()>& function)
{
    std::thread(function).join();
}

/// A thread that lives as long as this object, for a reader that stays while the daemon starts and
/// ends.
class ReaderThread
{
public:
    ReaderThread()
    {
        m_object.moveToThread(&m_thread);
        m_thread.start();
    }
    ~ReaderThread()
    {
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(ReaderThread)

    /// Runs a function on the thread, and waits for its end.
    void run(const std::function<void()>& function)
    {
        QMetaObject::invokeMethod(&m_object, function, Qt::BlockingQueuedConnection);
    }

private:
    QThread m_thread;
    QObject m_object;
};

/// The number of pictures that an agent lists; -1 without an agent or if the listing fails.
int countPhotos(QueryAgent* agent)
{
    BatchRecorder recorder;
    return agent && agent->query(&recorder, {}) ? recorder.contents().size() : -1;
}

/// The number of pictures that a new thread finds.
int countPhotosAnew()
{
    int count = -1;
    runInThread([&count] { count = countPhotos(QueryAgent::agentFor(MoodsetContent::Image)); });
    return count;
}

/// Makes the database's directory and files read-only while it lives.
class WriteProtection
{
public:
    WriteProtection()
        : m_folder(QFileInfo(QueryAgentDatabase::filePath()).path())
    {
        set(QFile::ReadOwner | QFile::ExeOwner, QFile::ReadOwner);
    }
    ~WriteProtection()
    {
        const QFile::Permissions readWrite = QFile::ReadOwner | QFile::WriteOwner;
        set(readWrite | QFile::ExeOwner, readWrite);
    }
    Q_DISABLE_COPY_MOVE(WriteProtection)

private:
    void set(QFile::Permissions folder, QFile::Permissions files)
    {
        for (const QFileInfo& file : QDir(m_folder).entryInfoList(QDir::Files)) {
            QFile::setPermissions(file.filePath(), files);
        }
        QFile::setPermissions(m_folder, folder);
    }

    const QString m_folder;
};

} // namespace

/// Tests client threads that read while the real daemon writes, starts, ends and rebuilds.
class ReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(QStringLiteral("data"))));
        QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("pictures")));
        QVERIFY(DaemonProcess::setPicturesFolder(m_folder->filePath(QStringLiteral("pictures"))));
        for (int i = 0; i < Pictures; ++i) {
            QVERIFY(addPicture(i));
        }
    }

    void readerFromBeforeTheDatabaseGetsItsAgent()
    {
        MessageLog log;
        ReaderThread reader;
        reader.run([] { QVERIFY(!QueryAgent::agentFor(MoodsetContent::Image)); });
        QCOMPARE(log.takeWarnings().size(), 2);

        runDaemon([](DaemonProcess&) {});

        reader.run(
            [] { QCOMPARE(countPhotos(QueryAgent::agentFor(MoodsetContent::Image)), Pictures); });
    }

    void readersListWhileTheDaemonIndexes()
    {
        runDaemon([](DaemonProcess&) {});
        std::atomic_bool isIndexing = true;
        std::atomic_int failures = 0;
        std::atomic_int finalCounts = 0;
        const auto read = [&] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Image);
            int last = Pictures;
            bool isFinal = false;
            while (!isFinal) {
                isFinal = !isIndexing;
                const int count = countPhotos(agent);
                failures += count < last ? 1 : 0;
                last = count;
            }
            finalCounts += last;
        };
        std::thread first(read);
        std::thread second(read);
        for (int i = Pictures; i < 5 * Pictures; ++i) {
            QVERIFY(addPicture(i));
        }

        runDaemon([&](DaemonProcess&) { isIndexing = false; });
        isIndexing = false;
        first.join();
        second.join();

        QCOMPARE(failures.load(), 0);
        QCOMPARE(finalCounts.load(), 2 * 5 * Pictures);
    }

    void readerOfARebuiltFileReadsTheOldOneAndNewThreadsTheNew()
    {
        runDaemon([](DaemonProcess&) {});
        QVERIFY(setVersion(11));
        ReaderThread reader;
        const auto photos = [&reader] {
            int count = -1;
            reader.run(
                [&count] { count = countPhotos(QueryAgent::agentFor(MoodsetContent::Image)); });
            return count;
        };
        QCOMPARE(photos(), Pictures);
        QVERIFY(addPicture(Pictures));

        runDaemon([&photos](DaemonProcess& daemon) {
            // The daemon has replaced the file that is open here.
            QCOMPARE(photos(), Pictures);
            QCOMPARE(countPhotosAnew(), Pictures + 1);
            QCOMPARE(
                daemon.takeWarnings(),
                QStringList(
                    {QStringLiteral("Database version outdated or non-existent"),
                     QStringLiteral("DbManager::DbManager() Nuking moodset database due previous "
                                    "errors!"),
                     QStringLiteral("Delete:  \"%1/\"")
                         .arg(QFileInfo(QueryAgentDatabase::filePath()).path())}));
        });
    }

    void readerNeedsNoRightToWriteWhileTheDaemonRuns()
    {
        runDaemon([](DaemonProcess&) {
            const WriteProtection protection;
            QCOMPARE(countPhotosAnew(), Pictures);
        });
    }

    void readerNeedsNoRightToWriteAfterTheDaemonWasKilled()
    {
        // It does not handle the signal, so it never closes its connection.
        runDaemon([](DaemonProcess&) {});
        const WriteProtection protection;

        QCOMPARE(countPhotosAnew(), Pictures);
    }

    void readerReadsAfterACleanClose()
    {
        runDaemon([](DaemonProcess&) {});
        closeCleanly();

        QCOMPARE(countPhotosAnew(), Pictures);
    }

    void readerWithoutTheRightToWriteFailsAfterACleanClose()
    {
        runDaemon([](DaemonProcess&) {});
        closeCleanly();
        const WriteProtection protection;
        MessageLog log;

        runInThread([&log] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Image);
            QVERIFY(agent);
            QCOMPARE(countPhotos(agent), -1);
            const QStringList warnings = log.takeWarnings();
            QCOMPARE(warnings.size(), 8);
            QCOMPARE(warnings.at(1), QStringLiteral("Failed to prepare query"));
            QVERIFY2(
                warnings.at(2).contains(QStringLiteral("attempt to write a readonly database")),
                qPrintable(warnings.at(2)));
            QCOMPARE(warnings.at(5), QStringLiteral("Failed to execute photo query"));
        });
    }

    void readerWithoutTheRightToWriteFailsWhenTheSharedMemoryIsGone()
    {
        runDaemon([](DaemonProcess&) {});
        QVERIFY(QFile::remove(QueryAgentDatabase::filePath() + QStringLiteral("-shm")));
        const WriteProtection protection;
        MessageLog log;

        runInThread([&log] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Image);
            QVERIFY(agent);
            QCOMPARE(countPhotos(agent), -1);
            QCOMPARE(log.takeWarnings().size(), 8);
        });
    }

private:
    bool addPicture(int number)
    {
        return writePicture(
            m_folder->filePath(QStringLiteral("pictures/%1.png").arg(number)), QSize(4, 3));
    }

    /// Runs the daemon until all pictures are indexed, then a function, and ends it by a signal.
    void runDaemon(const std::function<void(DaemonProcess&)>& function)
    {
        DaemonProcess daemon;
        daemon.setEnvironment(
            QStringLiteral("XDG_DATA_HOME"), QFile::decodeName(qgetenv("XDG_DATA_HOME")));
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForIdle());
        function(daemon);
        QVERIFY(daemon.terminate());
    }

    static bool execOnDatabase(const QString& statement)
    {
        QueryAgentDatabase database;
        database.setDatabaseName(QueryAgentDatabase::filePath());
        return database.open() && QSqlQuery(database).exec(statement);
    }

    static bool setVersion(int version)
    {
        return execOnDatabase(QStringLiteral("PRAGMA user_version = %1").arg(version));
    }

    /// Closes the database as a daemon does that returns from main(): the last connection that can
    /// write removes the companion files.
    static void closeCleanly()
    {
        QVERIFY(execOnDatabase(QStringLiteral("SELECT count(*) FROM file")));
        QVERIFY(!QFile::exists(QueryAgentDatabase::filePath() + QStringLiteral("-shm")));
        QVERIFY(!QFile::exists(QueryAgentDatabase::filePath() + QStringLiteral("-wal")));
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(ReadingTest)

#include "tst_reading.moc"
