// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "dconfcommand.h"
#include "playedservice.h"
#include "storewatcher.h"

#include <QColor>
#include <QDBusError>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <memory>
#include <sys/resource.h>
#include <vector>

namespace {

const QString Gnome = QStringLiteral("gnome");
const QString Plasma = QStringLiteral("plasma");
const QString Sway = QStringLiteral("sway");
const QString Red = QStringLiteral("#ffe02030");
const QString Green = QStringLiteral("#ff209030");

QString statePath()
{
    return BridgeSession::dataFolder() + QStringLiteral("/state.json");
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool showsCopyOf(const QString& path)
{
    const QString copy = QUrl(BridgeSession::stored(BridgeSession::PictureUriKey)).toLocalFile();
    const QByteArray content = contentOf(path);
    return !copy.isEmpty() && !content.isEmpty() && contentOf(copy) == content;
}

bool hasAccent(const QString& name)
{
    return waitUntil([&] { return BridgeSession::stored(BridgeSession::AccentKey) == name; });
}

class GnomeShell : public PlayedService
{
public:
    GnomeShell()
        : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.gnome.Shell"))
    {
    }
};

class PlasmaShell : public PlayedService
{
public:
    PlasmaShell()
        : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.kde.plasmashell"))
    {
    }
};

/// Limits what the processes may have open that this one starts.
class DescriptorLimit
{
public:
    explicit DescriptorLimit(rlim_t count)
    {
        rlimit limit{};
        m_isSet = getrlimit(RLIMIT_NOFILE, &m_before) == 0;
        limit = {count, m_before.rlim_max};
        m_isSet = m_isSet && setrlimit(RLIMIT_NOFILE, &limit) == 0;
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &m_before); }
    Q_DISABLE_COPY_MOVE(DescriptorLimit)

    bool isSet() const { return m_isSet; }

private:
    rlimit m_before{};
    bool m_isSet = false;
};

/// Something that listens where sway would.
class PlayedSway
{
public:
    explicit PlayedSway(const QByteArray& answer)
        : m_answer(answer)
    {
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
            QLocalSocket* const socket = m_server.nextPendingConnection();
            ++m_connections;
            QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
                socket->readAll();
                socket->write(m_answer);
            });
        });
    }

    bool listen()
    {
        return m_server.listen(
            qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/sway-ipc.1.2.sock"));
    }

    int connections() const { return m_connections; }

private:
    const QByteArray m_answer;
    QLocalServer m_server;
    int m_connections = 0;
};

} // namespace

/// The bridge with files, shells and services that are broken, slow or hostile.
class BridgeHostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWallpapersThatAreNoPictures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("missing");
        QTest::newRow("directory") << QStringLiteral("directory");
        QTest::newRow("FIFO") << QStringLiteral("fifo");
        QTest::newRow("device") << QStringLiteral("device");
        QTest::newRow("link to itself") << QStringLiteral("loop");
        QTest::newRow("empty") << QStringLiteral("empty.png");
        QTest::newRow("huge") << QStringLiteral("huge.png");
        QTest::newRow("line break") << QStringLiteral("two\nlines.png");
    }

    void refusesWallpapersThatAreNoPictures()
    {
        QFETCH(QString, name);
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString good = session.picture(QStringLiteral("good.png"), Qt::green);
        session.folder.makeDirectory(QStringLiteral("directory"));
        session.folder.makeFifo(QStringLiteral("fifo"));
        session.folder.makeLink(QStringLiteral("device"), QStringLiteral("/dev/zero"));
        session.folder.makeLink(QStringLiteral("loop"), QStringLiteral("loop"));
        session.folder.write(QStringLiteral("empty.png"), {});
        session.folder.write(QStringLiteral("two\nlines.png"), "no picture");
        session.folder.write(QStringLiteral("huge.png"), "\x89PNG\r\n\x1a\n");
        QVERIFY(QFile::resize(
            session.folder.path(QStringLiteral("huge.png")), qint64(65) * 1024 * 1024));
        QVERIFY(session.start());

        BridgeSession::setLook(session.folder.path(name), Red);

        QVERIFY(session.waitForFailure(
            Gnome, QStringLiteral("is no JPEG or PNG picture of up to 64 MiB")));
        QVERIFY(hasAccent(QStringLiteral("red")));
        QCOMPARE(BridgeSession::stored(BridgeSession::PictureUriKey), QString());
        QCOMPARE(BridgeSession::copies(), QStringList());
        const QStringList warnings = session.takeWarnings();
        QVERIFY2(warnings.size() == 1, qPrintable(warnings.join(QLatin1Char('|'))));

        BridgeSession::setLook(good, Green);
        QVERIFY(waitUntil([&] { return showsCopyOf(good); }));
        QVERIFY(session.waitForFailure(Gnome, QString()));
    }

    void startsWithAnyConfiguration_data()
    {
        QTest::addColumn<QByteArray>("text");
        QByteArray noise;
        for (int i = 0; i < 4096; ++i) {
            noise.append(char((i * 7919) >> 3));
        }
        QTest::newRow("noise") << noise;
        QTest::newRow("no group ends") << QByteArray("[adapters\ngnome\n=\n[[[\n%%%=%zz\n");
        QTest::newRow("lists") << QByteArray(
            "[adapters]\ngnome=auto, on\n[files]\nhook=@Point()\n");
        QTest::newRow("too large") << QByteArray("[adapters]\n" + QByteArray(2 * 1024 * 1024, 'x'));
    }

    void startsWithAnyConfiguration()
    {
        QFETCH(QByteArray, text);
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::configure(text);
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(hasAccent(QStringLiteral("red")));
        static_cast<void>(session.takeWarnings()); // of some values, not of all
    }

    void waitsForNoConfiguration()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::configure({});
        const QString path =
            qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/moodset/bridge.conf");
        QVERIFY(QFile::remove(path));
        session.folder.makeFifo(QStringLiteral("fifo"));
        QVERIFY(QFile::link(session.folder.path(QStringLiteral("fifo")), path));

        QVERIFY(session.start());

        QCOMPARE(
            session.takeWarnings(),
            QStringList(QStringLiteral("The configuration cannot be read: \"%1\"").arg(path)));
        QVERIFY(QFile::remove(path));
    }

    void tellsOfAnAdapterThatThereIsNot()
    {
        BridgeSession session;
        BridgeSession::configure("[adapters]\ngnom=off\n");

        QVERIFY(session.start());

        QCOMPARE(
            session.takeWarnings(),
            QStringList(
                QStringLiteral("The configuration names no adapter of the bridge: \"gnom\"")));
    }

    void servesTheOthersWhileAShellAnswersNever()
    {
        PlayedSway sway({});
        PlasmaShell plasma;
        GnomeShell gnome;
        BridgeSession session;
        plasma.answerLater(QStringLiteral("evaluateScript"));
        QVERIFY(gnome.appear());
        QVERIFY(plasma.appear());
        QVERIFY(sway.listen());
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(hasAccent(QStringLiteral("red")));
        const QString late = QStringLiteral("It did not answer within 5 s.");
        QVERIFY(session.waitForFailure(Plasma, late));
        QVERIFY(session.waitForFailure(Sway, late));
        QStringList warnings = session.takeWarnings();
        warnings.sort();
        QCOMPARE(
            warnings,
            QStringList({QStringLiteral("plasma: ") + late, QStringLiteral("sway: ") + late}));
    }

    void servesAShellThatGoesInTheMiddleAndComesBack()
    {
        PlasmaShell plasma;
        BridgeSession session;
        plasma.answerLater(QStringLiteral("evaluateScript"));
        QVERIFY(plasma.appear());
        QVERIFY(session.start());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);
        QStringList calls;
        const auto isCalled = [&] {
            calls += plasma.takeCalls();
            return calls.join(QLatin1Char(' ')).contains(QStringLiteral("evaluateScript"));
        };
        QVERIFY(waitUntil(isCalled));

        plasma.vanish();

        QVERIFY(session.waitForStatus(Plasma, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("present")).toBool()
                && !status.value(QStringLiteral("failure")).toString().isEmpty();
        }));
        QCOMPARE(session.takeWarnings().size(), 1);
        calls.clear();
        QVERIFY(plasma.appear());
        QVERIFY(waitUntil(isCalled));
        session.kill();
    }

    void tellsWhyAShellRefuses()
    {
        PlasmaShell plasma;
        BridgeSession session;
        plasma.answerWithError(
            QStringLiteral("evaluateScript"), QStringLiteral("org.example.Error"),
            QStringLiteral("two\nlines"));
        QVERIFY(plasma.appear());
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(session.waitForFailure(Plasma, QStringLiteral("The shell refuses: two\nlines")));
        QCOMPARE(
            session.takeWarnings(),
            QStringList(QStringLiteral("plasma: The shell refuses: two?lines")));
    }

    void outlivesAShellThatAnswersNonsense_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("connections");
        constexpr int tries = 10;
        QTest::newRow("no message") << QByteArray(100, 'x') << tries;
        QTest::newRow("no end") << QByteArray("i3-ipc") + QByteArray::fromHex("ffffff7f00000000")
                + QByteArray(100, 'x')
                                << tries;
        QTest::newRow("no JSON") << QByteArray("i3-ipc") + QByteArray::fromHex("0300000000000000")
                + QByteArray("[{]")
                                 << 1;
    }

    void outlivesAShellThatAnswersNonsense()
    {
        QFETCH(QByteArray, answer);
        QFETCH(int, connections);
        PlayedSway sway(answer);
        GnomeShell gnome;
        BridgeSession session;
        QVERIFY(gnome.appear());
        QVERIFY(sway.listen());
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(session.waitForStatus(Sway, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("failure")).toString().isEmpty();
        }));
        // It is asked some times, and then no more.
        QVERIFY(waitUntil([&] { return sway.connections() >= connections; }));
        for (int i = 0; i < 5; ++i) {
            static_cast<void>(session.status(Sway)); // lets time pass
        }
        QCOMPARE(sway.connections(), connections);
        session.kill();
        const QStringList warnings = session.takeWarnings();
        for (const QString& warning : warnings) {
            QVERIFY2(warning.startsWith(QStringLiteral("sway: ")), qPrintable(warning));
        }
    }

    void appliesWhatAnInterruptedRunHasNotSet()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);
        QVERIFY(session.start());
        QVERIFY(session.waitForStatus(Gnome, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("time")).toString().isEmpty();
        }));
        session.kill();
        // As if it had been killed between the record of the next look and the look.
        QJsonObject root = QJsonDocument::fromJson(contentOf(statePath())).object();
        QJsonObject adapters = root.value(QStringLiteral("adapters")).toObject();
        QJsonObject gnome = adapters.value(Gnome).toObject();
        QJsonObject set = gnome.value(QStringLiteral("set")).toObject();
        gnome.insert(QStringLiteral("earlier"), QJsonArray{set});
        gnome.insert(QStringLiteral("unfinished"), true);
        set.insert(BridgeSession::AccentKey, QStringLiteral("green"));
        gnome.insert(QStringLiteral("set"), set);
        adapters.insert(Gnome, gnome);
        root.insert(QStringLiteral("adapters"), adapters);
        QFile state(statePath());
        QVERIFY(state.open(QIODevice::WriteOnly));
        state.write(QJsonDocument(root).toJson());
        state.close();
        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(session.start());

        QVERIFY(hasAccent(QStringLiteral("green")));
    }

    void keepsAWholeRecordWhenItIsKilled()
    {
        constexpr int kills = 10;
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString other = session.picture(QStringLiteral("b.png"), Qt::green);
        for (int i = 0; i < kills; ++i) {
            QVERIFY(session.start());
            session.folder.write(QStringLiteral("go on"));
            QProcess writer;
            writer.start(
                QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("while [ -e '%4' ]; do dconf write %1 \"'%2'\"; dconf write %1 "
                                "\"'%3'\"; done")
                     .arg(
                         BridgeSession::WallpaperKey, picture, other,
                         session.folder.path(QStringLiteral("go on")))});
            QTest::qWait(17 * i); // the moment of the kill
            session.kill();
            session.folder.remove(QStringLiteral("go on"));
            QVERIFY(waitUntil([&] { return writer.state() == QProcess::NotRunning; }));
            if (QFile::exists(statePath())) { // it was not killed before its first record
                const QByteArray record = contentOf(statePath());
                QVERIFY2(QJsonDocument::fromJson(record).isObject(), record.constData());
            }
        }

        BridgeSession::setLook(picture, Green);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        QVERIFY(waitUntil([] { return BridgeSession::copies().size() == 1; }));
        QCOMPARE(session.run({QStringLiteral("--restore")}), 0);
        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
    }

    void restoresWhatAKilledBridgeWasAboutToStore()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        BridgeSession::write({{BridgeSession::PictureUriKey, QStringLiteral("file:///mine.png")}});
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        const QString first = BridgeSession::stored(BridgeSession::PictureUriKey);
        {
            PausedDconfService paused;
            QVERIFY(paused.isPaused());
            session.picture(QStringLiteral("b.png"), Qt::green);
            session.folder.rename(QStringLiteral("b.png"), QStringLiteral("a.png"));
            QVERIFY(session.waitForStatus(Gnome, [&first](const QJsonObject& status) {
                const QJsonObject set = status.value(QStringLiteral("set")).toObject();
                return set.value(BridgeSession::PictureUriKey) != first;
            }));
            session.kill();
            constexpr int pauseMs = 300;
            QTimer timer;
            timer.setSingleShot(true);
            QObject::connect(&timer, &QTimer::timeout, this, [&paused] { paused.resume(); });
            timer.start(pauseMs);

            QCOMPARE(session.run({QStringLiteral("--restore")}), 0);
        }

        QCOMPARE(
            BridgeSession::stored(BridgeSession::PictureUriKey),
            QStringLiteral("file:///mine.png"));
    }

    void followsManyWriters()
    {
        constexpr int writers = 8;
        constexpr int changes = 1000;
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        const QString other = session.picture(QStringLiteral("b.png"), Qt::green);
        QVERIFY(session.start());
        std::vector<std::unique_ptr<QProcess>> processes;
        for (int i = 0; i < writers; ++i) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(
                QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("for i in 0 1 2 3 4; do dconf write %1 \"'%2'\"; done")
                     .arg(BridgeSession::WallpaperKey, i % 2 == 0 ? picture : other)});
        }
        for (int i = 0; i < changes; ++i) {
            BridgeSession::setLook(i % 2 == 0 ? other : picture, i % 2 == 0 ? Green : Red);
        }
        for (const std::unique_ptr<QProcess>& process : processes) {
            QVERIFY(waitUntil([&] { return process->state() == QProcess::NotRunning; }));
        }

        BridgeSession::setLook(other, Green);

        QVERIFY(waitUntil([&] { return showsCopyOf(other); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        QVERIFY(waitUntil([] { return BridgeSession::copies().size() == 1; }));
    }

    void isNotHeldUpByOtherFilesBesideTheWallpaper()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        BridgeSession::setLook(picture, Red);
        QVERIFY(session.start());
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QProcess noise;
        noise.start(
            QStringLiteral("sh"),
            {QStringLiteral("-c"),
             QStringLiteral("while :; do : >%1; rm %1; sleep 0.02; done")
                 .arg(session.folder.path(QStringLiteral("noise")))});
        QVERIFY(noise.waitForStarted());

        BridgeSession::write({{BridgeSession::HighlightKey, Green}});

        QVERIFY(hasAccent(QStringLiteral("green")));
        noise.kill();
        QVERIFY(noise.waitForFinished());
        QFile::remove(session.folder.path(QStringLiteral("noise")));
    }

    void setsNothingWithoutRoomForTheWayBack()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString disk = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
        session.setEnvironment(QStringLiteral("XDG_DATA_HOME"), disk);
        QFile filler(disk + QStringLiteral("/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(4096, 'x')) > 0) { }
        QVERIFY(session.start());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);

        BridgeSession::setLook(picture, Red);

        QStringList warnings;
        QVERIFY(waitUntil([&] {
            warnings += session.takeWarnings();
            return warnings.join(QLatin1Char('|')).contains(QStringLiteral("gnome: "));
        }));
        QVERIFY2(
            warnings.join(QLatin1Char('|')).contains(QStringLiteral("No space left")),
            qPrintable(warnings.join(QLatin1Char('|'))));
        QCOMPARE(BridgeSession::stored(BridgeSession::AccentKey), QString());

        QVERIFY(filler.remove());
        BridgeSession::setLook(picture, Green);
        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
        QVERIFY(hasAccent(QStringLiteral("green")));
        static_cast<void>(session.takeWarnings());
        session.kill();
        QVERIFY(QDir(disk + QStringLiteral("/moodset-bridge")).removeRecursively());
    }

    void livesWithFewDescriptors()
    {
        GnomeShell shell;
        BridgeSession session;
        QVERIFY(shell.appear());
        const QString picture = session.picture(QStringLiteral("a.png"), Qt::red);
        {
            const DescriptorLimit limit(32);
            QVERIFY(limit.isSet());
            QVERIFY(session.start());
        }

        BridgeSession::setLook(picture, Red);

        QVERIFY(waitUntil([&] { return showsCopyOf(picture); }));
    }

    void endsWithItsBus()
    {
        const QString machine = qEnvironmentVariable("PRIVATE_MACHINE");
        const QString address = QStringLiteral("unix:path=%1/runtime/other-bus").arg(machine);
        QProcess bus;
        bus.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
             QStringLiteral("--print-address"),
             QStringLiteral("--config-file=%1/session-bus.conf").arg(machine),
             QStringLiteral("--address=") + address});
        QVERIFY(bus.waitForReadyRead());
        BridgeSession session;
        session.setEnvironment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        QVERIFY(session.start());

        bus.kill();

        QVERIFY(session.waitForEnd());
    }
};

QTEST_GUILESS_MAIN(BridgeHostileTest)

#include "tst_bridgehostile.moc"
