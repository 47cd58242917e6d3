// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "encodedpicture.h"
#include "httpserver.h"
#include "mediapicture.h"
#include "paintedpicture.h"
#include "phonesession.h"
#include "themekeys.h"
#include "themesession.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QFile>
#include <QTest>

#include <csignal>

namespace {

const QString PluginPath = QStringLiteral("QT_PLUGIN_PATH");

/// A picture whose decoder kills the process. Its size and its tags can be read.
QByteArray lethalPicture()
{
    return mediaPicture("avif", {QSize(40, 30)}, 0);
}

bool writeLethalPicture(const QString& path)
{
    return InstalledBundles::write(path, lethalPicture());
}

/// A picture whose decoder kills the process when it is asked for the size. The daemon asks it,
/// because the file describes nothing.
bool writePictureLethalToLookAt(const QString& path)
{
    return InstalledBundles::write(
        path, box("ftyp", QByteArray("avif\0\0\0\0", 8)) + box("free", "lethal size"));
}

QVariantList urlOf(const QString& path)
{
    return {QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded())};
}

/// A daemon that the lethal picture kills, and that does not tell of earlier themes.
struct CrashSession : ThemeSession
{
    CrashSession() { daemon.setEnvironment(PluginPath, QStringLiteral(LETHAL_PLUGINS)); }

    /// Whether a decoder ends the daemon, or has ended it.
    bool isKilledByADecoder()
    {
        return daemon.waitForEnd() && daemon.exitStatus() == QProcess::CrashExit
            && daemon.exitCode() == SIGKILL;
    }
};

} // namespace

/// Tests that a daemon which a picture has ended does not try by itself again what has ended it.
class CrashesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestForAPictureIsLost_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<bool>("isInPicturesFolder");
        for (const char* const method : {"setMoodset", "createMoodset"}) {
            QTest::addRow("%s, in the pictures folder", method)
                << QString::fromLatin1(method) << true;
            QTest::addRow("%s, elsewhere", method) << QString::fromLatin1(method) << false;
        }
    }

    void requestForAPictureIsLost()
    {
        QFETCH(QString, method);
        QFETCH(bool, isInPicturesFolder);
        CrashSession session;
        const QString name = QStringLiteral("lethal.avif");
        const QString path =
            isInPicturesFolder ? session.folders.picture(name) : session.folders.elsewhere(name);
        QVERIFY(writeLethalPicture(path));
        QVERIFY(session.startAtRest());

        const QDBusMessage reply = BusClient::call(method, urlOf(path));

        QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
        QVERIFY(session.isKilledByADecoder());
        QVERIFY(session.startAtRest());
        QCOMPARE(ThemeSession::theme(), QStringList());
        QCOMPARE(session.library().moodset(path, QStringLiteral("version")), QStringList());
        QCOMPARE(session.pictureSize(path), QSize(40, 30));
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void requestForADownloadIsLost()
    {
        CrashSession session;
        HttpServer server;
        const QString lethal = QStringLiteral("/lethal.avif");
        const QString good = QStringLiteral("/good.png");
        server.answer(lethal, lethalPicture());
        server.answer(good, encodedPicture(quadrantPicture(QSize(20, 20)), "png"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(server.url(lethal)));

        QVERIFY(session.isKilledByADecoder());
        QVERIFY(session.startAtRest());
        const QString saved = session.folders.picture(QStringLiteral("online_img0.jpg"));
        QVERIFY(!QFile::exists(saved));
        QVERIFY(ThemeSession::set(server.url(good)));
        QTRY_COMPARE_WITH_TIMEOUT(
            UserStore::value(ThemeKeys::ActiveMoodset), QStringLiteral("'%1'").arg(saved),
            DaemonProcess::deadlineMs);
        QCOMPARE(server.requests(), QStringList({lethal, good}));
        session.daemon.takeWarnings();
    }

    void callsThatHaveWaitedFail()
    {
        CrashSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("lethal.avif"));
        const QString good = session.folders.elsewhere(QStringLiteral("good.png"));
        QVERIFY(writeLethalPicture(path) && ThemeSession::writePicture(good));
        QVERIFY(session.startAtRest());
        QVERIFY(session.daemon.pause());
        QDBusPendingReply<> lethalCall =
            BusClient::callLater(QStringLiteral("setMoodset"), urlOf(path));
        QDBusPendingReply<> goodCall =
            BusClient::callLater(QStringLiteral("setMoodset"), urlOf(good));

        session.daemon.resume();

        QVERIFY(session.isKilledByADecoder());
        lethalCall.waitForFinished();
        goodCall.waitForFinished();
        QCOMPARE(lethalCall.error().type(), QDBusError::NoReply);
        QCOMPARE(goodCall.error().type(), QDBusError::NoReply);
        QVERIFY(session.startAtRest());
        QCOMPARE(ThemeSession::theme(), QStringList());
    }

    void pictureOfTheActiveMoodsetIsNotDecodedAtTheStart()
    {
        CrashSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());
        QVERIFY(ThemeSession::set(path));
        const QStringList theme = session.expectedTheme(path);
        QCOMPARE(ThemeSession::theme(), theme);
        QVERIFY(session.daemon.terminate());
        QVERIFY(writeLethalPicture(path));

        QVERIFY(session.startAtRest());

        QCOMPARE(session.pictureSize(path), QSize(40, 30));
        QCOMPARE(ThemeSession::theme(), theme);
        QVERIFY(!ThemeSession::set(path));
        QVERIFY(session.isKilledByADecoder());
    }

    void pictureWhoseHeaderEndsTheDaemonIsLeftOutInTheEnd()
    {
        CrashSession session;
        const QString path = session.folders.picture(QStringLiteral("lethal.avif"));
        const QStringList others{
            session.folders.picture(QStringLiteral("a.png")),
            session.folders.picture(QStringLiteral("z.png"))};
        QVERIFY(writePictureLethalToLookAt(path));
        for (const QString& other : others) {
            QVERIFY(ThemeSession::writePicture(other));
        }
        for (int starts = 0; starts < 2; ++starts) {
            QVERIFY(session.daemon.start());
            QVERIFY(session.isKilledByADecoder());
        }

        QVERIFY(session.startAtRest());

        QCOMPARE(session.pictureSize(path), QSize(-1, -1));
        for (const QString& other : others) {
            QCOMPARE(session.pictureSize(other), QSize(200, 120));
        }
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(
                {QStringLiteral("virtual bool ImageManager::updateMetaData()"),
                 QStringLiteral("Left out a picture on which the last two processes have ended")}));
        QVERIFY(session.daemon.terminate());
        QVERIFY(session.startAtRest());
        QVERIFY(writeLethalPicture(path));
        QTRY_COMPARE_WITH_TIMEOUT(
            session.pictureSize(path), QSize(40, 30), DaemonProcess::deadlineMs);
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void moodsetOfACoverIsNotSwitchedToAgain()
    {
        PhoneSession session;
        session.daemon.setEnvironment(PluginPath, QStringLiteral(LETHAL_PLUGINS));
        QVERIFY(session.startOnPhone());
        QVERIFY(session.installBundle(true));
        QVERIFY(writeLethalPicture(
            InstalledBundles::folder() + QStringLiteral("coast-light/images/coast-light.jpg")));
        session.attach();
        QVERIFY(session.daemon.waitForEnd());
        QCOMPARE(session.daemon.exitCode(), SIGKILL);
        session.cover.setProperties(PhoneSession::CoverId, 1);
        const int linesBefore = session.daemon.lines().size();

        QVERIFY(session.startAtRest());

        QVERIFY(BusClient::isAnswered());
        const QStringList lines = session.daemon.lines().mid(linesBefore);
        QCOMPARE(lines.filter(QStringLiteral("setMoodset")), QStringList());
        QCOMPARE(PhoneSession::stored(QStringLiteral("active_moodset")), QString());
    }

    void nextCallStartsADaemonThatWorks()
    {
        qputenv("QT_PLUGIN_PATH", LETHAL_PLUGINS);
        ClientSession session;
        qunsetenv("QT_PLUGIN_PATH");
        const QString lethal = session.folders.elsewhere(QStringLiteral("lethal.avif"));
        const QString good = session.folders.elsewhere(QStringLiteral("good.png"));
        QVERIFY(writeLethalPicture(lethal) && ThemeSession::writePicture(good));

        const ClientSession::Result failure = ClientSession::run({QStringLiteral("set"), lethal});

        QVERIFY2(failure.exitCode > 0, qPrintable(failure.output));
        QVERIFY(!failure.errors.isEmpty());
        auto* const bus = QDBusConnection::sessionBus().interface();
        const QString service = QStringLiteral("com.zavro.moodsetd");
        QVERIFY(!bus->isServiceRegistered(service));
        QCOMPARE(ThemeSession::theme(), QStringList());
        const ClientSession::Result success = ClientSession::run({QStringLiteral("set"), good});
        QVERIFY2(success.exitCode == 0, qPrintable(success.errors));
        QCOMPARE(UserStore::value(ThemeKeys::ActiveMoodset), QStringLiteral("'%1'").arg(good));
        QVERIFY(bus->isServiceRegistered(service));
    }
};

QTEST_GUILESS_MAIN(CrashesTest)

#include "tst_crashes.moc"
