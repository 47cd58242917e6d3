// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "gnomeshell.h"
#include "playedservice.h"

#include <QFile>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTest>

namespace {

const QString Gnome = QStringLiteral("gnome");
const QString Plasma = QStringLiteral("plasma");
const QString Portal = QStringLiteral("portal");
const QString Sway = QStringLiteral("sway");
const QString Red = QStringLiteral("#ffe02030");
const QString Green = QStringLiteral("#ff209030");

class PlasmaShell : public PlayedService
{
public:
    PlasmaShell()
        : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.kde.plasmashell"))
    {
    }
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

/// A portal that never says which colour it has.
class SilentPortal : public PlayedService
{
public:
    SilentPortal()
        : PlayedService(
            QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.portal.Desktop"))
    {
        answerLater(QStringLiteral("Read"));
    }
};

/// Starts the bridge with a colour, and waits until it has found that there is no portal.
bool startBeforeThePortal(BridgeSession* session)
{
    BridgeSession::write({{BridgeSession::HighlightKey, Red}});
    return session->start() && session->waitForFirstLook(Portal);
}

} // namespace

/// The bridge with files and shells that are broken, slow or hostile.
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

    /// It asks by itself whether a portal that appears has the colour.
    void givesUpAPortalThatAnswersNever()
    {
        SilentPortal portal;
        BridgeSession session;
        QVERIFY(startBeforeThePortal(&session));

        QVERIFY(portal.appear());

        const QString late = QStringLiteral("It did not answer within 5 s.");
        QVERIFY(session.waitForFailure(Portal, late));
        QCOMPARE(session.takeWarnings(), QStringList(QStringLiteral("portal: ") + late));
    }

    void checksAgainWhenTheLookIsReadDuringACheck()
    {
        SilentPortal portal;
        BridgeSession session;
        QVERIFY(startBeforeThePortal(&session));
        QVERIFY(portal.appear());
        QVERIFY(portal.waitForCalls(1));

        // The colour stays the same.
        BridgeSession::write({{BridgeSession::MoodsetKey, QStringLiteral("/a.moodset")}});

        QVERIFY(portal.waitForCalls(2));
        QVERIFY(session.waitForFailure(Portal, QStringLiteral("It did not answer within 5 s.")));
        QCOMPARE(session.takeWarnings().size(), 1);
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
};

QTEST_GUILESS_MAIN(BridgeHostileTest)

#include "tst_bridgehostile.moc"
