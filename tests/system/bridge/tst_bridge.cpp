// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "dconfcommand.h"
#include "playedservice.h"
#include "storewatcher.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

namespace {

const QString Gnome = QStringLiteral("gnome");
const QString Files = QStringLiteral("files");
const QString Red = QStringLiteral("#ffe02030");
const QString Green = QStringLiteral("#ff209030");

QString handedOut()
{
    return QUrl(BridgeSession::stored(BridgeSession::pictureUriKey)).toLocalFile();
}

/// Whether the shell is told to show a copy of the file as it is now.
bool showsCopyOf(const QString& path)
{
    const QString copyPath = handedOut();
    QFile file(path);
    QFile copy(copyPath);
    return !copyPath.isEmpty() && file.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadOnly)
        && file.readAll() == copy.readAll();
}

/// A shell of GNOME, as far as the bus shows.
class Shell : public PlayedService
{
public:
    Shell()
        : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.gnome.Shell"))
    {
    }
};

} // namespace

/// What the bridge makes of the daemon's keys, whatever happens to it and its files.
class BridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsOnPictureAndAccent()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString uri = BridgeSession::stored(BridgeSession::pictureUriKey);
        QVERIFY2(uri.startsWith(QStringLiteral("file:///")), qPrintable(uri));
        const QString background = QStringLiteral("/org/gnome/desktop/background/");
        QCOMPARE(BridgeSession::stored(background + QStringLiteral("picture-uri-dark")), uri);
        QCOMPARE(
            BridgeSession::stored(background + QStringLiteral("picture-options")),
            QStringLiteral("zoom"));
        QCOMPARE(
            BridgeSession::stored(QStringLiteral("/org/gnome/desktop/screensaver/picture-uri")),
            uri);
        QCOMPARE(BridgeSession::stored(BridgeSession::accentKey), QStringLiteral("red"));
    }

    void setsNothingWithoutAShell()
    {
        BridgeSession session;
        BridgeSession::configure("[adapters]\nfiles=auto\n[files]\nhook=/bin/true\n");
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        // The hook has run, so the look has arrived.
        QVERIFY(session.waitForStatus(Files, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("time")).toString().isEmpty();
        }));
        QCOMPARE(BridgeSession::stored(BridgeSession::pictureUriKey), QString());
        QVERIFY(!session.status(Gnome).value(QStringLiteral("present")).toBool());
    }

    void givesALateShellTheLook()
    {
        Shell shell;
        BridgeSession session;
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());

        QVERIFY(shell.appear());

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
    }

    void handsOutARewrittenPictureUnderAFreshName()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString first = handedOut();

        // As the daemon does: a new file takes the name of the old one, and no key changes.
        session.picture(QStringLiteral("b.png"), Qt::green);
        session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(handedOut() != first);
        QVERIFY(waitUntil([&] { return !QFile::exists(first); }));
        QCOMPARE(BridgeSession::copies().size(), 1);
    }

    void keepsThePictureWhenColoursChange()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString first = handedOut();

        BridgeSession::write({{BridgeSession::highlightKey, Green}});

        QVERIFY(waitUntil([] {
            return BridgeSession::stored(BridgeSession::accentKey) == QStringLiteral("green");
        }));
        QCOMPARE(handedOut(), first);
    }

    void keepsTheCopyOfAPictureThatIsDeleted()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString first = handedOut();

        session.folder.remove(QStringLiteral("a.png"));
        BridgeSession::write({{BridgeSession::highlightKey, Green}});

        QVERIFY(waitUntil([] {
            return BridgeSession::stored(BridgeSession::accentKey) == QStringLiteral("green");
        }));
        QCOMPARE(handedOut(), first);
        QVERIFY(QFile::exists(first));
    }

    void showsTheApplicationWallpaperForAForeignFormat()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString second = session.picture(QStringLiteral("second.jpg"), Qt::red);
        session.folder.write(QStringLiteral("a.webp"), "RIFF....WEBPVP8 ");

        BridgeSession::write(
            {{BridgeSession::wallpaperKey, session.folder.path(QStringLiteral("a.webp"))},
             {QStringLiteral("/desktop/zavro/background/portrait/app_picture_filename"), second}});

        QVERIFY(waitUntil([&] { return showsCopyOf(second); }));
    }

    void copesWithOddNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("space") << QStringLiteral("a b.png");
        QTest::newRow("quotes") << QStringLiteral("a'b\"c.png");
        QTest::newRow("percent") << QStringLiteral("100%41.png");
        QTest::newRow("umlaut") << QString::fromUtf8("\xc3\xa4\xc3\x96.png");
        QTest::newRow("line break") << QStringLiteral("a\nb.png");
    }

    void copesWithOddNames()
    {
        QFETCH(QString, name);
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString picture = session.picture(name, Qt::blue);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString uri = BridgeSession::stored(BridgeSession::pictureUriKey);
        QVERIFY2(
            QRegularExpression(QStringLiteral("/wallpaper-[0-9a-z]+\\.png$")).match(uri).hasMatch(),
            qPrintable(uri));
    }

    void appliesOnlyTheLastOfABurst()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString first = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString last = session.picture(QStringLiteral("b.png"), Qt::green);
        BridgeSession::setLook(first, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(first); }));
        StoreWatcher watcher;

        for (int i = 0; i < 50; ++i) {
            BridgeSession::setLook(i % 2 == 0 ? first : last, i % 2 == 0 ? Red : Green);
        }

        QVERIFY(waitUntil([&] { return showsCopyOf(last); }));
        QVERIFY(watcher.catchUp());
        int applied = 0;
        const QList<QStringList> announcements = watcher.announcements();
        for (const QStringList& keys : announcements) {
            applied += keys.contains(BridgeSession::pictureUriKey) ? 1 : 0;
        }
        // The first change may be told at once, and after that only the end of the burst.
        QVERIFY2(applied <= 2, qPrintable(QString::number(applied)));
    }

    void restoresWhatTheUserHad()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::pictureUriKey, QStringLiteral("file:///mine.png")}});
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));

        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);

        QVERIFY(session.waitForEnd());
        QCOMPARE(
            BridgeSession::stored(BridgeSession::pictureUriKey),
            QStringLiteral("file:///mine.png"));
        QCOMPARE(BridgeSession::stored(BridgeSession::accentKey), QString());
        QCOMPARE(BridgeSession::copies(), QStringList());
    }

    void restoreLeavesWhatTheUserHasChangedSince()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        BridgeSession::write({{BridgeSession::pictureUriKey, QStringLiteral("file:///new.png")}});

        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);

        QCOMPARE(
            BridgeSession::stored(BridgeSession::pictureUriKey), QStringLiteral("file:///new.png"));
        QCOMPARE(BridgeSession::stored(BridgeSession::accentKey), QString());
    }

    void aStartKeepsWhatTheUserHasChosenMeanwhile()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        session.kill();
        BridgeSession::write({{BridgeSession::pictureUriKey, QStringLiteral("file:///new.png")}});

        QVERIFY(session.start());
        BridgeSession::write({{BridgeSession::highlightKey, Red}});
        QVERIFY(session.waitForFailure(Gnome, QString()));

        QCOMPARE(
            BridgeSession::stored(BridgeSession::pictureUriKey), QStringLiteral("file:///new.png"));
    }

    void startsAnewWithADamagedState()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QDir().mkpath(BridgeSession::dataFolder());
        QFile state(BridgeSession::dataFolder() + QStringLiteral("/state.json"));
        QVERIFY(state.open(QIODevice::WriteOnly));
        state.write("{ \"adapters\": [");
        state.close();
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);

        QVERIFY(session.start());

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QStringList warnings = session.takeWarnings();
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings.first().startsWith(
            QStringLiteral("The state file is damaged and was set aside:")));
        QVERIFY(QFile::exists(state.fileName() + QStringLiteral(".damaged")));
    }

    void tellsThatADataFolderCannotBeWritten()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        session.folder.makeDirectory(QStringLiteral("data"));
        session.folder.setMode(QStringLiteral("data"), 0500);
        session.setEnvironment(
            QStringLiteral("XDG_DATA_HOME"), session.folder.path(QStringLiteral("data")));
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(session.start());

        // Without a way back nothing is set.
        QVERIFY(waitUntil([&] {
            return session.takeWarnings()
                       .join(QLatin1Char(' '))
                       .contains(QStringLiteral("state.json cannot be made"))
                || !session.isRunning();
        }));
        QVERIFY(session.isRunning());
        QCOMPARE(BridgeSession::stored(BridgeSession::pictureUriKey), QString());
        static_cast<void>(session.takeWarnings());
        session.kill();
        static_cast<void>(session.takeWarnings());
        session.folder.setMode(QStringLiteral("data"), 0700);
    }

    void keepsTheOldPictureOnAFullDisk()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString disk = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
        session.setEnvironment(QStringLiteral("XDG_DATA_HOME"), disk);
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QFile huge(session.folder.path(QStringLiteral("huge.png")));
        QVERIFY(huge.open(QIODevice::WriteOnly));
        huge.write("\x89PNG\r\n\x1a\n");
        huge.resize(4 * 1024 * 1024);
        huge.close();

        BridgeSession::setLook(huge.fileName(), Green);

        QVERIFY(session.waitForFailure(Gnome, QStringLiteral("cannot be copied: No space left")));
        QVERIFY(showsCopyOf(picture));
        QCOMPARE(BridgeSession::stored(BridgeSession::accentKey), QStringLiteral("green"));
        const QStringList warnings = session.takeWarnings();
        QCOMPARE(warnings.size(), 1);
        session.kill();
        QVERIFY(QDir(disk + QStringLiteral("/moodset-bridge")).removeRecursively());
    }

    void restoresAfterAKillAtAnyTime()
    {
        constexpr int kills = 12;
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::pictureUriKey, QStringLiteral("file:///mine.png")}});
        for (int i = 0; i < kills; ++i) {
            const QString picture =
                session.picture(QStringLiteral("%1.png").arg(i % 3), QColor(i, 0, 0));
            QVERIFY(session.start());
            BridgeSession::setLook(picture, i % 2 == 0 ? Red : Green);
            QTest::qWait(3 * i); // the moment of the kill, from before the copy to after the end
            session.kill();
        }

        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);

        QCOMPARE(
            BridgeSession::stored(BridgeSession::pictureUriKey),
            QStringLiteral("file:///mine.png"));
        QCOMPARE(BridgeSession::copies(), QStringList());
    }

    void tellsThatTheStoreHasNotKeptAValue()
    {
        Shell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString other = session.picture(QStringLiteral("b.png"), Qt::green);

        QVERIFY(killDconfService());
        session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));

        // The next write starts the service again.
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
    }

    void writesTemplatesAndRunsTheHook()
    {
        BridgeSession session;
        const QString target = session.folder.path(QStringLiteral("out.css"));
        const QString seen = session.folder.path(QStringLiteral("seen"));
        session.folder.write(
            QStringLiteral("in.css"), "a { color: {{highlight}}; b: rgb({{highlight.rgb}}) }");
        session.folder.write(
            QStringLiteral("hook"),
            "#!/bin/sh\nprintf '%s' \"$MOODSET_HIGHLIGHT\" > " + seen.toUtf8());
        session.folder.setMode(QStringLiteral("hook"), 0755);
        session.folder.write(QStringLiteral("out.css"), "mine");
        BridgeSession::configure(
            "[adapters]\nfiles=on\n[files]\nhook="
            + session.folder.path(QStringLiteral("hook")).toUtf8()
            + "\n[template-bar]\nsource=" + session.folder.path(QStringLiteral("in.css")).toUtf8()
            + "\ntarget=" + target.toUtf8() + '\n');
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        const auto content = [](const QString& path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QVERIFY(waitUntil([&] { return content(seen) == "#e02030"; }));
        QCOMPARE(content(target), QByteArray("a { color: #e02030; b: rgb(224, 32, 48) }"));
        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);
        QCOMPARE(content(target), QByteArray("mine"));
    }

    void endsAHookThatHangs()
    {
        BridgeSession session;
        const QString seen = session.folder.path(QStringLiteral("seen"));
        session.folder.write(
            QStringLiteral("hook"),
            "#!/bin/sh\nsleep 300 & echo $! > " + seen.toUtf8() + "\nwait\n");
        session.folder.setMode(QStringLiteral("hook"), 0755);
        BridgeSession::configure(
            "[adapters]\nfiles=on\n[files]\nhook-limit=1\nhook="
            + session.folder.path(QStringLiteral("hook")).toUtf8() + '\n');
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(session.waitForFailure(Files, QStringLiteral("It did not answer within 1 s.")));
        QFile file(seen);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString process = QString::fromLatin1(file.readAll().trimmed());
        QVERIFY(!process.isEmpty());
        QVERIFY(waitUntil([&] {
            QFile status(QStringLiteral("/proc/%1/stat").arg(process));
            return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z");
        }));
        QCOMPARE(
            session.takeWarnings(),
            QStringList(QStringLiteral("files: It did not answer within 1 s.")));
    }

    void runsOnce()
    {
        BridgeSession session;
        QVERIFY(session.start());

        QCOMPARE(session.run({}), 1);

        QCOMPARE(
            session.output(),
            QStringLiteral("moodset-bridge: It runs already, or there is no session bus.\n"));
        QVERIFY(session.isRunning());
    }
};

QTEST_GUILESS_MAIN(BridgeTest)

#include "tst_bridge.moc"
