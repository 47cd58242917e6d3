// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "picturefile.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <csignal>

/// Tests how the daemon starts and ends, also under bad conditions.
class StartupTest : public QObject
{
    Q_OBJECT

private:
    const QString m_databaseIsFine =
        QStringLiteral("debug: DbManager::DbManager() Moodset DB Fine...");
    const QString m_registers =
        QStringLiteral("debug: AlbumGallery::AlbumGallery(QObject*) Registering dbus...");
    const QString m_isTaken =
        QStringLiteral("fatal: DBUS service already taken. Kill the other instance first.");

    static bool setPermissions(const QString& path, QFile::Permissions permissions)
    {
        return QFile::setPermissions(path, permissions);
    }

    static QStringList linesWithoutDuration(const DaemonProcess& daemon)
    {
        return daemon.lines().replaceInStrings(
            QRegularExpression(QStringLiteral("(idle in) \\d+$")), QStringLiteral("\\1 n"));
    }

private Q_SLOTS:
    void logsTheStepsOfAStart()
    {
        DaemonSession session;
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), QSize(3, 2)));
        QVERIFY(session.start());
        QVERIFY(session.daemon.waitForLine(QStringLiteral("InstallManager idle in ")));

        QStringList lines = linesWithoutDuration(session.daemon);

        // Either of them may be idle first.
        std::sort(lines.begin() + 3, lines.end());
        const QStringList expected{
            m_databaseIsFine, m_registers,
            QStringLiteral("debug: AlbumGallery::AlbumGallery(QObject*) Starting to monitor "
                           "directories..."),
            QStringLiteral("debug: FileManager idle in n"),
            QStringLiteral("debug: InstallManager idle in n")};
        QCOMPARE(lines, expected);
    }

    void endsOnSigterm()
    {
        DaemonSession session;
        QVERIFY(session.start());

        QVERIFY(session.daemon.terminate());

        QCOMPARE(session.daemon.exitStatus(), QProcess::CrashExit);
        QCOMPARE(session.daemon.exitCode(), SIGTERM);
        QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(
            QStringLiteral("com.zavro.moodsetd")));
    }

    void keepsItsRowsWhenNothingHasChanged()
    {
        DaemonSession session;
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral("folder"))));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), QSize(3, 2)));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("folder/b.png")), QSize(3, 2)));
        QVERIFY(session.start());
        const auto rows = [&session] {
            return session.library().rows(QStringLiteral(
                "SELECT * FROM directory, file, image WHERE directoryId = directory.id "
                "AND fileId = file.id ORDER BY file.id"));
        };
        const LibraryDatabase::Rows before = rows();

        QVERIFY(session.restart());

        QCOMPARE(before.count(), 2);
        QCOMPARE(rows(), before);
    }

    void noticesWhatChangedWhileItDidNotRun()
    {
        DaemonSession session;
        const QString changed = session.folders.picture(QStringLiteral("changed.png"));
        const QString gone = session.folders.picture(QStringLiteral("gone.png"));
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral("gone"))));
        QVERIFY(writePicture(changed, QSize(3, 2)));
        QVERIFY(writePicture(gone, QSize(3, 2)));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("gone/a.png")), QSize(3, 2)));
        QVERIFY(session.start());
        QVERIFY(session.daemon.terminate());

        QVERIFY(writePicture(changed, QSize(5, 4)));
        QVERIFY(QFile::remove(gone));
        QVERIFY(QDir(session.folders.picture(QStringLiteral("gone"))).removeRecursively());
        QVERIFY(QDir().mkpath(session.folders.picture(QStringLiteral("new"))));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("new/a.png")), QSize(3, 2)));
        QVERIFY(session.start());

        QCOMPARE(session.pictureSize(changed), QSize(5, 4));
        const QStringList directories{
            session.folders.pictures(), session.folders.picture(QStringLiteral("new"))};
        QCOMPARE(session.libraryDirectories(), directories);
    }

    void aSecondInstanceEndsAndTheFirstGoesOn()
    {
        DaemonSession session;
        QVERIFY(session.start());
        DaemonProcess second;

        QVERIFY(second.start());
        QVERIFY(second.waitForEnd());

        QCOMPARE(second.exitStatus(), QProcess::CrashExit);
        QCOMPARE(second.exitCode(), SIGABRT);
        const QStringList lines{
            m_databaseIsFine, m_registers, QStringLiteral("warning: QDBusError(\"\", \"\")"),
            m_isTaken};
        QCOMPARE(second.lines(), lines);
        second.takeWarnings();
        QVERIFY(session.waitUntilFollowed());
        QVERIFY(BusClient::isAnswered());
    }

    void oneOfTwoStartedAtOnceGoesOn()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.daemon.terminate());
        DaemonProcess other;

        QVERIFY(session.daemon.start());
        QVERIFY(other.start());
        QTRY_VERIFY_WITH_TIMEOUT(
            session.daemon.isRunning() != other.isRunning(), DaemonProcess::deadlineMs);

        DaemonProcess& winner = session.daemon.isRunning() ? session.daemon : other;
        DaemonProcess& loser = session.daemon.isRunning() ? other : session.daemon;
        QVERIFY(loser.waitForEnd());
        QCOMPARE(loser.exitCode(), SIGABRT);
        QCOMPARE(loser.lines().constLast(), m_isTaken);
        loser.takeWarnings();
        QVERIFY(winner.waitForName());
        QVERIFY(session.waitUntilFollowed());
    }

    void endsWithoutASessionBus()
    {
        DaemonSession session;
        session.daemon.setEnvironment(
            QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/none"));

        QVERIFY(session.daemon.start());
        QVERIFY(session.daemon.waitForEnd());

        QCOMPARE(session.daemon.exitCode(), SIGABRT);
        const QStringList lines{
            m_databaseIsFine, m_registers,
            QStringLiteral("warning: QDBusError(\"org.freedesktop.DBus.Error.Disconnected\", \"Not "
                           "connected to D-Bus server\")"),
            m_isTaken};
        QCOMPARE(session.daemon.lines(), lines);
        session.daemon.takeWarnings();
    }

    void answersWithoutADatabase()
    {
        DaemonSession session;
        const QString picture = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(setPermissions(session.folders.data(), QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(session.startOnBus());
        QVERIFY(session.daemon.waitForLine(QStringLiteral("InstallManager idle in ")));

        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(picture).toString()});

        QVERIFY(BusClient::isAnswered());
        const QString noError = QStringLiteral("QSqlError(\"\", \"\", \"\")");
        const QString notOpen = QStringLiteral("QSqlQuery::prepare: database not open");
        const QString noStatement = QStringLiteral("\"\"");
        const QString noQuery =
            QStringLiteral("QSqlError(\"\", \"Unable to fetch row\", \"No query\")");
        const QStringList expected{
            QStringLiteral("DbManager::DbManager: failed to create directory for db!"),
            notOpen,
            QStringLiteral("MoodsetManager::MoodsetManager(QueryAgentDatabase&, QObject*)"),
            QStringLiteral("Failed to prepare m_queryMoodset."),
            noError,
            noStatement,
            notOpen,
            QStringLiteral("QSqlQuery QueryAgent::prepareQuery(const QString&)"),
            QStringLiteral("Failed to prepare query"),
            noError,
            noStatement,
            QStringLiteral("Content MoodsetQueryAgent::querySingleMoodset(QSqlQuery&)"),
            QStringLiteral("Failed to query moodset"),
            QStringLiteral("QSqlError(\"\", \"Driver not loaded\", \"Driver not loaded\")"),
            noStatement,
            QStringLiteral("FileManager::FileManager(QueryAgentDatabase&, QObject*)"),
            QStringLiteral("Failed to open transation on database"),
            noError,
            notOpen,
            QStringLiteral("InstallManager::InstallManager(QueryAgentDatabase&, QObject*)"),
            QStringLiteral("Failed to prepare m_fileQuery."),
            noError,
            noStatement,
            notOpen,
            QStringLiteral("IndexManager::IndexManager(QueryAgentDatabase&)"),
            QStringLiteral("Failed to prepare m_fileQuery."),
            noError,
            noStatement,
            QStringLiteral("virtual bool MoodsetManager::updateMetaData()"),
            QStringLiteral("Failed to execute m_modifiedQuery"),
            noQuery,
            noStatement,
            QStringLiteral("virtual bool IndexManager::updateMetaData()"),
            QStringLiteral("Failed to execute m_modifiedQuery."),
            noQuery,
            noStatement,
            QStringLiteral("qint64 FileManager::insertFile(const QString&)"),
            QStringLiteral("Failed to execute m_directoryIdQuery."),
            QStringLiteral("QSqlError(\"\", \"Parameter count mismatch\", \"\")"),
            noStatement};
        QCOMPARE(session.daemon.takeWarnings(), expected);
    }

    void readsAPicturesFolderOnceItMay()
    {
        DaemonSession session;
        const QString folder = session.folders.pictures();
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(setPermissions(folder, {}));
        QVERIFY(session.startOnBus());
        QVERIFY(session.daemon.waitForIdle());
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(session.libraryFiles(), QStringList());
        const QString warning = QStringLiteral("Failed to add listener -1 \"%1\"").arg(folder);
        QCOMPARE(session.daemon.takeWarnings(), QStringList{warning});

        QVERIFY(setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(session.restart());

        QCOMPARE(session.pictureSize(picture), QSize(3, 2));
    }

    void leavesOutAFolderThatItMayNotRead()
    {
        DaemonSession session;
        const QString folder = session.folders.picture(QStringLiteral("closed"));
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writePicture(folder + QStringLiteral("/b.png"), QSize(3, 2)));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(setPermissions(folder, {}));

        QVERIFY(session.startOnBus());
        QVERIFY(session.daemon.waitForIdle());

        QCOMPARE(session.libraryFiles(), QStringList{picture});
        const QString warning = QStringLiteral("Failed to add listener -1 \"%1\"").arg(folder);
        QCOMPARE(session.daemon.takeWarnings(), QStringList{warning});
        QVERIFY(setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void keepsAPictureThatItMayNotReadWithoutASize()
    {
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(setPermissions(picture, {}));

        QVERIFY(session.start());

        QCOMPARE(session.libraryFiles(), QStringList{picture});
        QCOMPARE(session.pictureSize(picture), QSize(-1, -1));
    }

    void findsAPicturesFolderThatAppearsAtTheNextStartOnly()
    {
        DaemonSession session;
        const QString outside = session.folders.elsewhere(QStringLiteral("outside.png"));
        QVERIFY(writePicture(outside, QSize(1, 1)));
        QVERIFY(QDir().rmdir(session.folders.pictures()));
        QVERIFY(session.startOnBus());
        QVERIFY(session.daemon.waitForIdle());

        QVERIFY(QDir().mkpath(session.folders.pictures()));
        QVERIFY(writePicture(session.folders.picture(QStringLiteral("a.png")), QSize(3, 2)));
        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(outside).toString()});
        QTRY_COMPARE_WITH_TIMEOUT(
            session.pictureSize(outside), QSize(1, 1), DaemonProcess::deadlineMs);
        QCOMPARE(session.libraryFiles(), QStringList{outside});

        QVERIFY(session.daemon.terminate());
        QVERIFY(session.startOnBus());
        const QStringList expected{outside, session.folders.picture(QStringLiteral("a.png"))};
        QTRY_COMPARE_WITH_TIMEOUT(session.libraryFiles(), expected, DaemonProcess::deadlineMs);
    }
};

QTEST_GUILESS_MAIN(StartupTest)

#include "tst_startup.moc"
