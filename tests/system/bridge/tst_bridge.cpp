// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "dconfcommand.h"
#include "gnomeshell.h"
#include "storewatcher.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

#include <csignal>

namespace {

const QString Gnome = QStringLiteral("gnome");
const QString Files = QStringLiteral("files");
const QString Red = QStringLiteral("#ffe02030");
const QString Green = QStringLiteral("#ff209030");

/// A bridge with a shell, and with a red picture as the wallpaper.
struct BridgeWithShell
{
    /// Starts the shell and the bridge, and waits until the shell should show the picture.
    Q_REQUIRED_RESULT bool show()
    {
        BridgeSession::setLook(picture, Red);
        return shell.appear() && session.start()
            && waitUntil([this] { return showsCopyOf(picture); });
    }

    GnomeShell shell;
    BridgeSession session;
    QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
};

} // namespace

/// Tests how the bridge handles the daemon's keys, also under bad conditions.
class BridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsOnPictureAndAccent()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString uri = BridgeSession::stored(BridgeSession::PictureUriKey);
        QVERIFY2(uri.startsWith(QStringLiteral("file:///")), qPrintable(uri));
        const QString background = QStringLiteral("/org/gnome/desktop/background/");
        QCOMPARE(BridgeSession::stored(background + QStringLiteral("picture-uri-dark")), uri);
        QCOMPARE(
            BridgeSession::stored(background + QStringLiteral("picture-options")),
            QStringLiteral("zoom"));
        QCOMPARE(
            BridgeSession::stored(QStringLiteral("/org/gnome/desktop/screensaver/picture-uri")),
            uri);
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QStringLiteral("red"));
    }

    void setsNothingWithoutAShell()
    {
        BridgeSession session;
        BridgeSession::configure("[adapters]\nfiles=auto\n[files]\nhook=/bin/true\n");
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        // The hook has run, so the look has arrived.
        QVERIFY(session.waitForFirstLook(Files));
        QCOMPARE(BridgeSession::stored(BridgeSession::PictureUriKey), QString());
        QVERIFY(!session.status(Gnome).value(QStringLiteral("present")).toBool());
    }

    void givesALateShellTheLook()
    {
        GnomeShell shell;
        BridgeSession session;
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());

        QVERIFY(shell.appear());

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
    }

    void handsOutARewrittenPictureUnderAFreshName()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        const QString first = shownPicture();

        // The daemon does the same: a new file replaces the old one, and no key changes.
        bridge.session.picture(QStringLiteral("b.png"), Qt::green);
        bridge.session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));

        QVERIFY(waitUntil([&] { return showsCopyOf(bridge.picture); }));
        QVERIFY(shownPicture() != first);
        QVERIFY(waitUntil([&] { return !QFile::exists(first); }));
        QCOMPARE(BridgeSession::copies().size(), 1);
    }

    void keepsThePictureWhenColoursChange()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        const QString first = shownPicture();

        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(waitUntil([] {
            return BridgeSession::stored(BridgeSession::AccentKey) == QStringLiteral("green");
        }));
        QCOMPARE(shownPicture(), first);
    }

    void keepsTheCopyOfAPictureThatIsDeleted()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        const QString first = shownPicture();

        bridge.session.folder.remove(QStringLiteral("a.png"));
        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(waitUntil([] {
            return BridgeSession::stored(BridgeSession::AccentKey) == QStringLiteral("green");
        }));
        QCOMPARE(shownPicture(), first);
        QVERIFY(QFile::exists(first));
    }

    void showsTheApplicationWallpaperForAForeignFormat()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString second = session.picture(QStringLiteral("second.jpg"), Qt::red);
        session.folder.write(QStringLiteral("a.webp"), "RIFF....WEBPVP8 ");

        BridgeSession::write(
            {{BridgeSession::WallpaperKey, session.folder.path(QStringLiteral("a.webp"))},
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
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        QVERIFY(session.start());
        const QString picture = session.picture(name, Qt::blue);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString uri = BridgeSession::stored(BridgeSession::PictureUriKey);
        QVERIFY2(
            QRegularExpression(QStringLiteral("/wallpaper-[0-9a-z]+\\.png$")).match(uri).hasMatch(),
            qPrintable(uri));
    }

    void appliesOnlyTheLastOfABurst()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString first = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString last = session.picture(QStringLiteral("b.png"), Qt::green);
        BridgeSession::setLook(first, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(first); }));
        StoreWatcher watcher;

        // However busy the machine is, it finds all of them when it goes on.
        QVERIFY(::kill(pid_t(session.processId()), SIGSTOP) == 0);
        for (int i = 0; i < 50; ++i) {
            BridgeSession::setLook(i % 2 == 0 ? first : last, i % 2 == 0 ? Red : Green);
        }
        QVERIFY(::kill(pid_t(session.processId()), SIGCONT) == 0);

        QVERIFY(waitUntil([&] { return showsCopyOf(last); }));
        QVERIFY(watcher.catchUp());
        int applied = 0;
        const QList<QStringList> announcements = watcher.announcements();
        for (const QStringList& keys : announcements) {
            applied += keys.contains(BridgeSession::PictureUriKey) ? 1 : 0;
        }
        // The first change may be set at once, and after it only the end of the burst.
        QVERIFY2(applied <= 2, qPrintable(QString::number(applied)));
    }

    void restoresWhatTheUserHad()
    {
        BridgeWithShell bridge;
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        QVERIFY(bridge.show());

        QCOMPARE(bridge.session.run({QStringLiteral("--restore")}), 0);

        QVERIFY(bridge.session.waitForEnd());
        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QString());
        QCOMPARE(BridgeSession::copies(), QStringList());
    }

    void restoreLeavesWhatTheUserHasChangedSince()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QStringLiteral("red"));
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///new.png")}});

        QCOMPARE(bridge.session.run({QStringLiteral("--restore")}), 0);

        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey), QStringLiteral("file:///new.png"));
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QString());
    }

    void aStartKeepsWhatTheUserHasChosenMeanwhile()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        bridge.session.kill();
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///new.png")}});

        BridgeSession::configure("[adapters]\nfiles=auto\n[files]\nhook=/bin/true\n");
        QVERIFY(bridge.session.start());

        // The hook has run for the first time, so the look has arrived.
        QVERIFY(bridge.session.waitForFirstLook(Files));
        QVERIFY(bridge.session.waitForStatus(Gnome, [](const QJsonObject& status) {
            return status.value(QStringLiteral("present")).toBool();
        }));
        BridgeSession::settleStore();
        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey), QStringLiteral("file:///new.png"));
    }

    void startsAnewWithADamagedState()
    {
        GnomeShell shell;
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
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        session.folder.makeDirectory(QStringLiteral("data"));
        session.folder.setMode(QStringLiteral("data"), 0500);
        session.setEnvironment(
            QStringLiteral("XDG_DATA_HOME"), session.folder.path(QStringLiteral("data")));
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(session.start());

        // If the user's values cannot be saved, nothing is set.
        QVERIFY(waitUntil([&] {
            return session.takeWarnings()
                       .join(QLatin1Char(' '))
                       .contains(QStringLiteral("state.json cannot be made"))
                || !session.isRunning();
        }));
        QVERIFY(session.isRunning());
        QCOMPARE(BridgeSession::stored(BridgeSession::PictureUriKey), QString());
        static_cast<void>(session.takeWarnings());
        session.kill();
        static_cast<void>(session.takeWarnings());
        session.folder.setMode(QStringLiteral("data"), 0700);
    }

    void keepsTheOldPictureOnAFullDisk()
    {
        BridgeWithShell bridge;
        const QString disk = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
        bridge.session.setEnvironment(QStringLiteral("XDG_DATA_HOME"), disk);
        QVERIFY(bridge.show());
        QFile huge(bridge.session.folder.path(QStringLiteral("huge.png")));
        QVERIFY(huge.open(QIODevice::WriteOnly));
        huge.write("\x89PNG\r\n\x1a\n");
        huge.resize(qint64(4) * 1024 * 1024);
        huge.close();

        BridgeSession::setLook(huge.fileName(), Green);

        QVERIFY(bridge.session.waitForFailure(
            Gnome, QStringLiteral("cannot be copied: No space left")));
        QVERIFY(showsCopyOf(bridge.picture));
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QStringLiteral("green"));
        const QStringList warnings = bridge.session.takeWarnings();
        QCOMPARE(warnings.size(), 1);
        bridge.session.kill();
        QVERIFY(QDir(disk + QStringLiteral("/moodset-bridge")).removeRecursively());
    }

    void restoresAfterAKillAtAnyTime()
    {
        constexpr int kills = 12;
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        for (int i = 0; i < kills; ++i) {
            const QString picture =
                session.picture(QStringLiteral("%1.png").arg(i % 3), QColor(i, 0, 0));
            QVERIFY(session.start());
            BridgeSession::setLook(picture, i % 2 == 0 ? Red : Green);
            QTest::qWait(3 * i); // the moment of the kill, from before the copy to after the end
            session.kill();
        }
        BridgeSession::settleStore();

        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);

        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
        QCOMPARE(BridgeSession::copies(), QStringList());
    }

    void writesAlthoughTheServiceOfTheStoreWasKilled()
    {
        BridgeWithShell bridge;
        QVERIFY(bridge.show());
        const QString other = bridge.session.picture(QStringLiteral("b.png"), Qt::green);

        QVERIFY(killDconfService());
        bridge.session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));

        // The next write starts the service again.
        QVERIFY(waitUntil([&] { return showsCopyOf(bridge.picture); }));
    }

    void writesTemplatesAndRunsTheHook()
    {
        BridgeSession session;
        const QString sourceName = QString::fromUtf8("the \xc3\xa4%20'.css");
        const QString targetName = QString::fromUtf8("my \xc3\xb6%41'.css");
        const QString target = session.folder.path(targetName);
        const QString seen = session.folder.path(QStringLiteral("seen"));
        session.folder.write(sourceName, "a { color: {{highlight}}; b: rgb({{highlight.rgb}}) }");
        session.folder.write(
            QStringLiteral("hook"),
            "#!/bin/sh\nprintf '%s' \"$MOODSET_HIGHLIGHT\" > " + seen.toUtf8());
        session.folder.setMode(QStringLiteral("hook"), 0755);
        session.folder.write(targetName, "mine");
        BridgeSession::configure(
            "[adapters]\nfiles=on\n[files]\nhook="
            + session.folder.path(QStringLiteral("hook")).toUtf8() + "\n[template-bar]\nsource="
            + session.folder.path(sourceName).toUtf8() + "\ntarget=" + target.toUtf8() + '\n');
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
