// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"
#include "daemonprocess.h"
#include "dconfcommand.h"
#include "librarydatabase.h"
#include "picturefile.h"

#include <QDBusConnection>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace {

/// Plays the daemon on the session bus. It notes its calls, and applies a moodset if the test wants
/// it.
class PlayedService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.zavro.moodsetd")

public:
    explicit PlayedService(bool obeys = true)
        : m_obeys(obeys)
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        m_ready = bus.registerObject(
                      QStringLiteral("/com/zavro/moodsetd"), this, QDBusConnection::ExportAllSlots)
            && bus.registerService(QStringLiteral("com.zavro.moodsetd"));
    }
    ~PlayedService() override
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterService(QStringLiteral("com.zavro.moodsetd"));
        bus.unregisterObject(QStringLiteral("/com/zavro/moodsetd"));
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
    }
    Q_DISABLE_COPY_MOVE(PlayedService)

    bool isReady() const { return m_ready; }

    QStringList calls;

public Q_SLOTS:
    void setMoodset(const QString& url)
    {
        calls.append(QStringLiteral("setMoodset ") + url);
        if (m_obeys) {
            runDconf(
                {QStringLiteral("write"), QStringLiteral("/desktop/zavro/theme/active_moodset"),
                 QStringLiteral("'%1'").arg(QUrl(url).toLocalFile())});
        }
    }
    void createMoodset(const QString& url) { calls.append(QStringLiteral("createMoodset ") + url); }
    void refreshMoodsets() { calls.append(QStringLiteral("refreshMoodsets")); }

private:
    bool m_obeys;
    bool m_ready = false;
};

/// A directory with one moodset file of the given content, and with a wallpaper.
class Package
{
public:
    explicit Package(const QByteArray& content)
    {
        QFile file(m_folder.filePath(QStringLiteral("set.moodset")));
        m_ready = file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
            && QDir(m_folder.path()).mkdir(QStringLiteral("images"))
            && writePicture(m_folder.filePath(QStringLiteral("images/a.png")), QSize(3, 2));
    }

    bool isReady() const { return m_ready; }
    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
    bool m_ready = false;
};

const auto Coast = QByteArrayLiteral(
    R"({"version": 2, "displayName": "Coast light", "favorite": false, "wallpaper": "a.png",)"
    R"( "highlightColor": "#ff102030"})");

} // namespace

class MoodsetctlTest : public QObject
{
    Q_OBJECT

private:
    struct Result
    {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    static Result run(const QStringList& arguments)
    {
        QProcess process;
        // The event loop runs, for a daemon that this process plays.
        process.start(QStringLiteral(MOODSETCTL_EXECUTABLE), arguments);
        Result result;
        const bool hasEnded = QTest::qWaitFor(
            [&process] { return process.state() == QProcess::NotRunning; },
            DaemonProcess::deadlineMs);
        if (hasEnded && process.exitStatus() == QProcess::NormalExit) {
            result.exitCode = process.exitCode();
        }
        result.output = QString::fromUtf8(process.readAllStandardOutput());
        result.errors = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    static Result run(const char* words, const QString& last)
    {
        return run(QString::fromLatin1(words).split(QLatin1Char(' ')) << last);
    }

    static QStringList moodsetLines()
    {
        const Result result = run({QStringLiteral("moodsets")});
        return result.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private Q_SLOTS:
    void init()
    {
        QDir database = QFileInfo(LibraryDatabase::standardPath()).dir();
        QVERIFY(database.removeRecursively());
    }

    void saysThatTheDaemonIsNotRunning_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("watch") << QStringList(QStringLiteral("watch"));
        QTest::newRow("wait") << QStringList(QStringLiteral("wait"));
        QTest::newRow("photos, watched")
            << QStringList({QStringLiteral("photos"), QStringLiteral("--watch")});
        QTest::newRow("index") << QStringList(
            {QStringLiteral("index"), QStringLiteral(MOODSETCTL_EXECUTABLE)});
        QTest::newRow("set") << QStringList(
            {QStringLiteral("set"), QStringLiteral(MOODSETCTL_EXECUTABLE)});
        QTest::newRow("create") << QStringList(
            {QStringLiteral("create"), QStringLiteral(MOODSETCTL_EXECUTABLE)});
        QTest::newRow("favorite") << QStringList(
            {QStringLiteral("favorite"), QStringLiteral("1"), QStringLiteral("on")});
        QTest::newRow("remove") << QStringList({QStringLiteral("remove"), QStringLiteral("1")});
        QTest::newRow("refresh") << QStringList(QStringLiteral("refresh"));
    }

    void saysThatTheDaemonIsNotRunning()
    {
        QFETCH(QStringList, arguments);

        const Result result = run(arguments);

        QCOMPARE(result.exitCode, 3);
        QCOMPARE(result.output, QString());
        QCOMPARE(
            result.errors,
            QStringLiteral(
                "moodsetctl: the daemon is not running, and the session bus cannot start "
                "it; start it with: systemctl --user start moodsetd, or run moodsetd\n"));
    }

    void waitsForPicturesAndShowsThemWithoutTheDaemon()
    {
        const QTemporaryDir folder;
        const int pictures = 250;
        for (int number = 0; number < pictures; ++number) {
            QVERIFY(writePicture(
                folder.filePath(QStringLiteral("%1.png").arg(number)), QSize(number + 1, 1)));
        }
        QVERIFY(DaemonProcess::setPicturesFolder(folder.path()));
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const Result result = run({QStringLiteral("wait")});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const LibraryDatabase database;
        QCOMPARE(
            database.value(QStringLiteral("SELECT COUNT(*) FROM image WHERE height = 1")),
            QVariant(pictures));
        QVERIFY(daemon.terminate());

        const Result photos = run({QStringLiteral("photos")});

        QCOMPARE(photos.exitCode, 0);
        QVERIFY2(
            photos.output.endsWith(QStringLiteral("\n250 files, 250 pictures, 1 folder\n")),
            qPrintable(photos.output));
    }

    void indexTakesPathsAndUrls_data()
    {
        QTest::addColumn<bool>("asUrl");
        QTest::newRow("path") << false;
        QTest::newRow("url") << true;
    }

    void indexTakesPathsAndUrls()
    {
        QFETCH(bool, asUrl);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("100% #1?.png"));
        QVERIFY(writePicture(path, QSize(12, 34)));
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const QString argument =
            asUrl ? QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()) : path;
        const Result result = run({QStringLiteral("index"), argument});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const LibraryDatabase database;
        QCOMPARE(
            database.rows(
                QStringLiteral("SELECT width, height FROM image"
                               " JOIN file ON file.id = image.fileId"
                               " JOIN directory ON directory.id = file.directoryId"
                               " WHERE path = ? AND fileName = '100% #1?.png'"),
                {QVariant(folder.path())}),
            LibraryDatabase::Rows({{QVariant(12), QVariant(34)}}));
    }

    void installsAPackageAndShowsItsMoodset()
    {
        const Package package(Coast);
        QVERIFY(package.isReady());
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const Result result = run("install", package.path() + QLatin1Char('/'));

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const QStringList lines = moodsetLines();
        QCOMPARE(lines.size(), 3);
        QVERIFY2(
            lines.at(1).contains(QStringLiteral("  Coast light  -          -       ")),
            qPrintable(lines.at(1)));
        QVERIFY2(
            lines.at(1).endsWith(package.path() + QStringLiteral("/set.moodset  - - #ff102030 -")),
            qPrintable(lines.at(1)));
        QCOMPARE(lines.at(2), QStringLiteral("1 moodset"));
        QCOMPARE(daemon.takeWarnings(), QStringList());
    }

    void saysThatAPackageIsBroken_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no JSON") << QByteArray(
            "{\n words") << QStringLiteral("line 2, column 3: no JSON: unterminated object");
        QTest::newRow("no wallpaper")
            << QByteArray("{}")
            << QStringLiteral("line 1, column 1: \"wallpaper\" has to name a file in images/");
    }

    void saysThatAPackageIsBroken()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const Package package(content);
        QVERIFY(package.isReady());
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const Result result = run("install", package.path());

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodsetctl: %1: set.moodset: the daemon has not made a moodset of it: "
                           "%2\n")
                .arg(package.path(), reason));
        daemon.takeWarnings();
    }

    void changesAndRemovesTheMoodsetOfAName()
    {
        const Package package(Coast);
        QVERIFY(package.isReady());
        DaemonProcess daemon;
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());
        QCOMPARE(run("install", package.path()).exitCode, 0);
        const QString name = QStringLiteral("Coast light");

        const Result on = run({QStringLiteral("favorite"), name, QStringLiteral("on")});

        QCOMPARE(on.errors, QString());
        QCOMPARE(on.exitCode, 0);
        QVERIFY(moodsetLines().at(1).contains(QStringLiteral("  Coast light  yes        -  ")));

        const Result off = run({QStringLiteral("favorite"), name, QStringLiteral("off")});

        QCOMPARE(off.errors, QString());
        QCOMPARE(off.exitCode, 0);
        QVERIFY(moodsetLines().at(1).contains(QStringLiteral("  Coast light  -          -  ")));

        const Result removed = run("remove", name);

        QCOMPARE(removed.errors, QString());
        QCOMPARE(removed.exitCode, 0);
        QCOMPARE(moodsetLines(), QStringList(QStringLiteral("0 moodsets")));
        const Result again = run("remove", name);
        QCOMPARE(again.exitCode, 1);
        QCOMPARE(
            again.errors,
            QStringLiteral("moodsetctl: Coast light: no moodset has this id or name\n"));
        QCOMPARE(daemon.takeWarnings(), QStringList());
    }

    void refusesANameOfTwoMoodsets()
    {
        ContentWriter writer(LibraryDatabase::standardPath());
        for (const auto& path : {QStringLiteral("/a/1.moodset"), QStringLiteral("/a/2.moodset")}) {
            writer.addMoodset(path);
        }
        writer.exec(QStringLiteral("UPDATE file SET displayName = 'Twin'"));
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run("set", QStringLiteral("Twin"));

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodsetctl: Twin: no such file, and 2 moodsets have this name; "
                           "give an id\n"));
        QCOMPARE(service.calls, QStringList());
    }

    void setsTheMoodsetOfAName()
    {
        ContentWriter writer(LibraryDatabase::standardPath());
        writer.addMoodset(QStringLiteral("/a/1.moodset"));
        writer.exec(QStringLiteral("UPDATE file SET displayName = 'Coast light'"));
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run("set", QStringLiteral("Coast light"));

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(service.calls, QStringList(QStringLiteral("setMoodset file:///a/1.moodset")));
        const QStringList lines = moodsetLines();
        QVERIFY2(
            lines.at(1).contains(QStringLiteral("  Coast light  -          yes     ")),
            qPrintable(lines.at(1)));
    }

    void showsTheThemeWithoutTheDaemon()
    {
        const PlayedService service;
        runDconf(
            {QStringLiteral("write"), QStringLiteral("/desktop/zavro/theme/color/primary"),
             QStringLiteral("'#ff102030'")});
        runDconf(
            {QStringLiteral("write"), QStringLiteral("/desktop/zavro/theme/active_moodset"),
             QStringLiteral("'/a/1.moodset'")});

        const Result result = run({QStringLiteral("theme")});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        const QStringList lines = result.output.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 10);
        QCOMPARE(
            lines.at(6).simplified(),
            QStringLiteral("/desktop/zavro/theme/color/primary #ff102030"));
        QCOMPARE(
            lines.at(7).simplified(), QStringLiteral("/desktop/zavro/theme/color/secondary -"));
        QCOMPARE(
            lines.at(8).simplified(),
            QStringLiteral("/desktop/zavro/theme/active_moodset /a/1.moodset"));
    }

    void setsPicturesByPathAndUrl_data()
    {
        QTest::addColumn<bool>("asUrl");
        QTest::newRow("path") << false;
        QTest::newRow("url") << true;
    }

    void setsPicturesByPathAndUrl()
    {
        QFETCH(bool, asUrl);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("100% #1?.png"));
        QVERIFY(writePicture(path, QSize(12, 34)));
        const QString url = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
        const ContentWriter writer(LibraryDatabase::standardPath());
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run("set", asUrl ? url : path);

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(service.calls, QStringList(QStringLiteral("setMoodset ") + url));
    }

    void saysThatThePictureIsNotActive()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.png"));
        QVERIFY(writePicture(path, QSize(12, 34)));
        const ContentWriter writer(LibraryDatabase::standardPath());
        PlayedService service(false);
        QVERIFY(service.isReady());

        const Result result = run("set", path);

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(
            result.errors,
            QStringLiteral("moodsetctl: %1: the daemon has not made it active; "
                           "its log may give the reason: journalctl --user -u moodsetd\n")
                .arg(path));
    }

    void passesOnWhatIsOnTheNetwork_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("method");
        QTest::newRow("set") << QStringLiteral("set") << QStringLiteral("setMoodset ");
        QTest::newRow("create") << QStringLiteral("create") << QStringLiteral("createMoodset ");
    }

    void passesOnWhatIsOnTheNetwork()
    {
        QFETCH(QString, command);
        QFETCH(QString, method);
        const QString url = QStringLiteral("https://example.org/a%20b.jpg?c=d");
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run({command, QStringLiteral("--no-wait"), url});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(service.calls, QStringList(method + url));
    }

    void createsAMoodsetOfAPicture()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.png"));
        QVERIFY(writePicture(path, QSize(12, 34)));
        ContentWriter writer(LibraryDatabase::standardPath());
        PlayedService service;
        QVERIFY(service.isReady());

        const Result without = run("create", path);
        writer.addMoodset(path);
        const Result with = run("create", path);

        QCOMPARE(without.exitCode, 1);
        QCOMPARE(
            without.errors,
            QStringLiteral("moodsetctl: %1: the daemon has not made a moodset of it; "
                           "its log may give the reason: journalctl --user -u moodsetd\n")
                .arg(path));
        QCOMPARE(with.errors, QString());
        QCOMPARE(with.exitCode, 0);
        const QString call = QStringLiteral("createMoodset file://") + path;
        QCOMPARE(service.calls, QStringList({call, call}));
    }

    void refusesWhatIsNotThere_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("subject");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char* command, const char* subject, const char* fault) {
            QTest::addRow("%s %s", command, subject)
                << QString::fromLatin1(command) << QString::fromLatin1(subject)
                << QString::fromLatin1(fault);
        };
        row("set", "/none", "no such file, and no moodset has this id or name");
        row("set", "file:///none", "no such file");
        row("set", "/usr", "not a file");
        row("set", "http://[", "not a URL");
        row("create", "/none", "no such file");
        row("install", "/none", "no such folder");
        row("install", "/usr", "no file of a moodset and no index in it");
    }

    void refusesWhatIsNotThere()
    {
        QFETCH(QString, command);
        QFETCH(QString, subject);
        QFETCH(QString, fault);
        const ContentWriter writer(LibraryDatabase::standardPath());
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run({command, subject});

        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errors, QStringLiteral("moodsetctl: %1: %2\n").arg(subject, fault));
        QCOMPARE(service.calls, QStringList());
    }

    void refreshes()
    {
        const ContentWriter writer(LibraryDatabase::standardPath());
        PlayedService service;
        QVERIFY(service.isReady());

        const Result result = run({QStringLiteral("refresh"), QStringLiteral("--no-wait")});

        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(service.calls, QStringList(QStringLiteral("refreshMoodsets")));
    }
};

QTEST_GUILESS_MAIN(MoodsetctlTest)

#include "tst_moodsetctl.moc"
