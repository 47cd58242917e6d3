// SPDX-License-Identifier: BSD-3-Clause
#include "daemonprocess.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QTest>

#include <csignal>

class DaemonProcessTest : public QObject
{
    Q_OBJECT

private:
    static void setPlay(DaemonProcess& daemon, const char* play)
    {
        daemon.setEnvironment(QStringLiteral("PLAY"), QString::fromLatin1(play));
    }

    const QString m_playedDaemon = QStringLiteral(PLAYED_DAEMON);

private Q_SLOTS:
    void theObjectAnswersOnceTheNameIsThere()
    {
        DaemonProcess daemon(m_playedDaemon);
        setPlay(daemon, "run");

        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());

        const QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("com.zavro.moodsetd"), QStringLiteral("/com/zavro/moodsetd"),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
        const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
        QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
        daemon.takeWarnings();
    }

    void followsALifeByItsLog()
    {
        DaemonProcess daemon(m_playedDaemon);
        setPlay(daemon, "run");
        QVERIFY(DaemonProcess::setPicturesFolder(QStringLiteral("/pictures of mine")));

        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());
        QVERIFY(daemon.waitForLine(QStringLiteral("grave")));
        QVERIFY(daemon.waitForIdle());
        QVERIFY(daemon.waitForIdle());
        QVERIFY(daemon.terminate());

        QCOMPARE(daemon.exitStatus(), QProcess::CrashExit);
        QCOMPARE(daemon.exitCode(), SIGTERM);
        const QStringList lines{
            QStringLiteral("debug: Pictures: \"/pictures of mine\""),
            QStringLiteral("warning: \"two\\nlines\""), QStringLiteral("critical: grave"),
            QStringLiteral("debug: FileManager idle in 0"),
            QStringLiteral("debug: FileManager idle in 50")};
        QCOMPARE(daemon.lines(), lines);
        const QStringList warnings{QStringLiteral("\"two\\nlines\""), QStringLiteral("grave")};
        QCOMPARE(daemon.takeWarnings(), warnings);
        QCOMPARE(daemon.takeWarnings(), QStringList());
    }

    void seesTheNameOfItsOwnProcessOnly()
    {
        DaemonProcess first(m_playedDaemon);
        DaemonProcess second(m_playedDaemon);
        setPlay(first, "run");
        setPlay(second, "run");

        QVERIFY(first.start());
        QVERIFY(first.waitForName());
        QVERIFY(second.start());
        QVERIFY(second.waitForEnd());

        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 4);
        QVERIFY(first.isRunning());
        QVERIFY(first.kill());
        QCOMPARE(first.exitCode(), SIGKILL);
        first.takeWarnings();
        second.takeWarnings();
    }

    void pausesAndResumes()
    {
        DaemonProcess daemon(m_playedDaemon);
        setPlay(daemon, "run");
        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForName());
        const auto ping = [](int timeout) {
            const QDBusMessage call = QDBusMessage::createMethodCall(
                QStringLiteral("com.zavro.moodsetd"), QStringLiteral("/"),
                QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
            return QDBusConnection::sessionBus().call(call, QDBus::Block, timeout).type();
        };

        QVERIFY(daemon.pause());
        QCOMPARE(ping(100), QDBusMessage::ErrorMessage);
        daemon.resume();

        QCOMPARE(ping(DaemonProcess::deadlineMs), QDBusMessage::ReplyMessage);
        QVERIFY(daemon.kill());
        QVERIFY(!daemon.pause());
        daemon.takeWarnings();
    }

    void tellsHowTheProcessEnded_data()
    {
        QTest::addColumn<QByteArray>("play");
        QTest::addColumn<QProcess::ExitStatus>("status");
        QTest::addColumn<int>("code");
        QTest::newRow("crash") << QByteArray("crash") << QProcess::CrashExit << SIGABRT;
        QTest::newRow("exit") << QByteArray("exit") << QProcess::NormalExit << 3;
    }

    void tellsHowTheProcessEnded()
    {
        QFETCH(QByteArray, play);
        QFETCH(QProcess::ExitStatus, status);
        QFETCH(int, code);
        DaemonProcess daemon(m_playedDaemon);
        setPlay(daemon, play.constData());

        QVERIFY(daemon.start());
        QVERIFY(daemon.waitForEnd());

        QCOMPARE(daemon.exitStatus(), status);
        QCOMPARE(daemon.exitCode(), code);
        QVERIFY(!daemon.isRunning());
    }

    void waitingEndsWithTheProcess()
    {
        DaemonProcess daemon(m_playedDaemon);
        setPlay(daemon, "exit");
        QElapsedTimer clock;
        clock.start();

        QVERIFY(daemon.start());
        QVERIFY(!daemon.waitForIdle());

        QVERIFY(clock.elapsed() < DaemonProcess::deadlineMs / 2);
        QVERIFY(!daemon.waitForName());
        QVERIFY(!daemon.waitForLine(QStringLiteral("a")));
        QVERIFY(clock.elapsed() < DaemonProcess::deadlineMs / 2);
    }

    void reportsAMissingExecutable()
    {
        DaemonProcess daemon(QStringLiteral("/none/moodsetd"));

        QVERIFY(!daemon.start());
        QVERIFY(!daemon.isRunning());
    }
};

QTEST_GUILESS_MAIN(DaemonProcessTest)

#include "tst_daemonprocess.moc"
