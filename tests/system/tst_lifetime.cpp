// SPDX-License-Identifier: BSD-3-Clause
#include "encodedpicture.h"
#include "httpserver.h"
#include "paintedpicture.h"
#include "phonesession.h"
#include "picturefile.h"

#include <QFile>
#include <QTest>
#include <QUrl>

namespace {

bool becomesActive(const QString& path)
{
    return QTest::qWaitFor(
        [&path] {
            return PhoneSession::stored(QStringLiteral("active_moodset"))
                == QLatin1Char('\'') + path + QLatin1Char('\'');
        },
        DaemonProcess::deadlineMs);
}

bool makeActive(const QUrl& url, const QString& path)
{
    BusClient::call(QStringLiteral("setMoodset"), {url.toString()});
    return becomesActive(path);
}

/// When the watch of the pictures folder reports the saved picture, the picture already has its
/// row.
bool downloadTheme(PhoneSession& session)
{
    const QString place = QStringLiteral("/a.jpg");
    const QStringList expected = DaemonSession::rowExistsWarnings();
    HttpServer server;
    server.answer(place, encodedPicture(quadrantPicture(QSize(120, 90)), "jpeg"));
    const QString saved = session.folders.picture(QStringLiteral("online_img0.jpg"));
    return makeActive(server.url(place), saved) && session.daemon.waitForLine(expected.last())
        && session.daemon.takeWarnings() == expected;
}

/// Makes the daemon do each kind of work once.
bool useEverySubsystem(PhoneSession& session)
{
    // It is small, since valgrind takes its time for each pixel.
    UserStore::writeScreenSize(QSize(54, 96));
    const QString picture = session.folders.picture(QStringLiteral("a.png"));
    if (!writePicture(picture, QSize(120, 90)) || !session.startOnPhone()
        || !session.waitUntilComplete() || !session.installBundle(true)) {
        return false;
    }
    session.attach();
    if (!becomesActive(PhoneSession::MoodsetFile) || !downloadTheme(session)
        || !makeActive(QUrl::fromLocalFile(picture), picture)) {
        return false;
    }
    BusClient::call(
        QStringLiteral("saveAttributes"),
        {1, session.fileId(picture),
         QVariantMap{{QStringLiteral("highlightColor"), QStringLiteral("#ff0000")}}});
    BusClient::call(QStringLiteral("remove"), {1, session.fileId(PhoneSession::MoodsetFile)});
    return BusClient::isAnswered() && session.waitUntilFollowed();
}

} // namespace

/// Tests how the daemon ends after its event loop.
class LifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void objectsGoInOrder()
    {
        PhoneSession session(QStringLiteral(STOPPABLE_DAEMON));
        QVERIFY(useEverySubsystem(session));

        QVERIFY(session.daemon.terminate());

        QCOMPARE(
            session.daemon.lines().filter(QStringLiteral("gone: ")),
            QStringList(
                {QStringLiteral("debug: gone: SystemTheme on the bus"),
                 QStringLiteral("debug: gone: AlbumGallery off the bus"),
                 QStringLiteral("debug: gone: MoodsetAdaptor off the bus"),
                 QStringLiteral("debug: gone: DorselMonitor off the bus"),
                 QStringLiteral("debug: gone: FileManager off the bus")}));
        QCOMPARE(session.daemon.exitStatus(), QProcess::NormalExit);
        QCOMPARE(session.daemon.exitCode(), 0);
    }

    void memoryIsUsedRightAndGivenBack()
    {
        PhoneSession session(QStringLiteral(MEMCHECK));
        QFile log(session.folders.data() + QStringLiteral("/memcheck.log"));
        session.daemon.setEnvironment(
            QStringLiteral("MEMCHECK_PROGRAM"), QStringLiteral(STOPPABLE_DAEMON));
        session.daemon.setEnvironment(QStringLiteral("MEMCHECK_LOG"), log.fileName());
        QVERIFY(useEverySubsystem(session));

        QVERIFY(session.daemon.terminate());

        QVERIFY(log.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(log.readAll()), QString());
    }
};

QTEST_GUILESS_MAIN(LifetimeTest)

#include "tst_lifetime.moc"
