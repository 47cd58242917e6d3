// SPDX-License-Identifier: BSD-3-Clause
#include "encodedpicture.h"
#include "httpserver.h"
#include "storewatcher.h"
#include "themekeys.h"
#include "themesession.h"

#include <QImage>
#include <QTest>

using ThemeKeys::written;

namespace {

const QString Path = QStringLiteral("/a.png");

/// A green picture, as a server sends it.
QByteArray picture()
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::green);
    return encodedPicture(image, "png");
}

/// A daemon with a server that has a picture.
struct OnlineSession : ThemeSession
{
    OnlineSession() { server.answer(Path, picture()); }

    /// Applies the server's picture, and returns when the daemon has replied.
    bool set() const { return ThemeSession::set(server.url(Path)); }
    bool waitForMoodset()
    {
        return QTest::qWaitFor(
            [this] { return !library().moodset(saved, QStringLiteral("version")).isEmpty(); },
            DaemonProcess::deadlineMs);
    }
    /// Whether the picture that was downloaded first is applied.
    bool isTheme() const
    {
        return UserStore::value(ThemeKeys::ActiveMoodset) == QStringLiteral("'%1'").arg(saved);
    }
    /// The warning when the watch of the pictures folder reports the picture, which already has its
    /// row.
    bool takeWarningsOfTheWatch()
    {
        const QStringList expected = rowExistsWarnings();
        return daemon.waitForLine(expected.last()) && daemon.takeWarnings() == expected;
    }

    HttpServer server;
    const QString saved = folders.picture(QStringLiteral("online_img0.jpg"));
};

} // namespace

/// Tests how a picture on the network is applied.
class OnlineThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void downloadedPictureIsInTheKeys()
    {
        OnlineSession session;
        QVERIFY(session.startAtRest());

        QVERIFY(session.set());

        QVERIFY(session.waitForMoodset());
        QCOMPARE(
            ThemeSession::theme(),
            QStringList(
                {written(ThemeKeys::Picture, QString()),
                 written(ThemeKeys::PartnerSpace, QString()),
                 written(
                     ThemeKeys::ApplicationWallpaper,
                     ThemeSession::applicationWallpaper(session.saved)),
                 written(ThemeKeys::HomeWallpaper, ThemeSession::homeWallpaper(session.saved)),
                 written(ThemeKeys::ActiveMoodset, session.saved),
                 written(ThemeKeys::HighlightColor, QStringLiteral("#ff7fff7f")),
                 written(ThemeKeys::PrimaryColor, QStringLiteral("#ffffffff")),
                 written(ThemeKeys::SecondaryColor, QStringLiteral("#b0ffffff")),
                 written(ThemeKeys::SecondaryHighlightColor, QStringLiteral("#ff66cc66"))}));
        QCOMPARE(
            ThemeSession::profile(),
            QStringList(
                {written(
                     ThemeSession::profileFolder() + QStringLiteral("active"),
                     QStringLiteral("general")),
                 written(
                     ThemeSession::profileFolder() + QStringLiteral("general/ringing.alert.volume"),
                     QStringLiteral("80"))}));
        QVERIFY(session.takeWarningsOfTheWatch());
    }

    void downloadedPictureIsOneOfTheUsers()
    {
        OnlineSession session;
        QVERIFY(session.startAtRest());

        QVERIFY(session.set());

        QVERIFY(session.waitForMoodset());
        const QImage saved(session.saved, "jpg");
        QCOMPARE(saved.size(), QSize(40, 30));
        QCOMPARE(
            session.library().rows(QStringLiteral("SELECT fileId, source FROM download")),
            LibraryDatabase::Rows(
                {{session.fileId(session.saved), session.server.url(Path).toString()}}));
        QVERIFY(session.takeWarningsOfTheWatch());
        QTRY_VERIFY_WITH_TIMEOUT(
            session.client.announcements().contains(1), DaemonProcess::deadlineMs);
    }

    void answerComesBeforeThePicture()
    {
        OnlineSession session;
        session.server.hold(Path);
        QVERIFY(session.startAtRest());

        QVERIFY(session.set());

        QTRY_VERIFY_WITH_TIMEOUT(session.server.isHolding(Path), DaemonProcess::deadlineMs);
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(ThemeSession::theme(), QStringList());
        session.server.release(Path);
        QVERIFY(session.waitForMoodset());
        QVERIFY(session.isTheme());
        QVERIFY(session.takeWarningsOfTheWatch());
    }

    void knownPictureIsNotDownloadedAgainAfterARestart()
    {
        OnlineSession session;
        QVERIFY(session.startAtRest());
        QVERIFY(session.set());
        QVERIFY(session.waitForMoodset());
        QVERIFY(session.takeWarningsOfTheWatch());
        QVERIFY(session.daemon.terminate());
        UserStore::write(ThemeKeys::ActiveMoodset, QStringLiteral("'foreign'"));
        QVERIFY(session.startAtRest());

        QVERIFY(session.set());

        QVERIFY(session.isTheme());
        QCOMPARE(session.server.requests(), QStringList(Path));
        QCOMPARE(session.takeAnnouncements(), QList<int>{1});
    }

    void downloadThatARequestOvertakesIsOnlyStored()
    {
        OnlineSession session;
        session.server.hold(Path);
        const QString other = session.folders.elsewhere(QStringLiteral("b.png"));
        QVERIFY(ThemeSession::writePicture(other));
        QVERIFY(session.startAtRest());
        QVERIFY(session.set());
        QTRY_VERIFY_WITH_TIMEOUT(session.server.isHolding(Path), DaemonProcess::deadlineMs);

        QVERIFY(ThemeSession::create(other));
        session.server.release(Path);

        QVERIFY(session.waitForMoodset());
        QVERIFY(BusClient::isAnswered());
        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.takeWarningsOfTheWatch());
    }

    /// The followed keys do not contain its path.
    void editOfADownloadedThemeDoesNotReachTheKeys()
    {
        OnlineSession session;
        QVERIFY(session.startAtRest());
        QVERIFY(session.set());
        QVERIFY(session.waitForMoodset());
        QVERIFY(session.takeWarningsOfTheWatch());
        StoreWatcher watcher;

        QVERIFY(session.edit(
            session.saved, {{QStringLiteral("highlightColor"), QStringLiteral("#010203")}}));

        QCOMPARE(
            session.library().moodset(session.saved, QStringLiteral("highlightColor")),
            QStringList(QStringLiteral("#010203")));
        QVERIFY(session.hasWrittenNothing(&watcher));
    }

    /// They also do not reach the keys through the theme before.
    void editOfTheFormerThemeDoesNotReachTheKeysOfADownloadedOne()
    {
        OnlineSession session;
        const QString other = session.folders.elsewhere(QStringLiteral("b.png"));
        QVERIFY(ThemeSession::writePicture(other));
        QVERIFY(session.startAtRest());
        QVERIFY(session.set());
        QVERIFY(session.waitForMoodset());
        QVERIFY(session.takeWarningsOfTheWatch());
        const QStringList theme = ThemeSession::theme();
        QVERIFY(ThemeSession::set(other));

        QVERIFY(session.setAndEdit(
            session.server.url(Path), other,
            {{QStringLiteral("highlightColor"), QStringLiteral("#ff010203")}}));

        QCOMPARE(ThemeSession::theme(), theme);
        QCOMPARE(
            session.library().moodset(other, QStringLiteral("highlightColor")),
            QStringList(QStringLiteral("#ff010203")));
    }

    void failedDownload_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QString>("warning");
        QTest::newRow("error")
            << QByteArray("404 Not Found") << QByteArray()
            << QStringLiteral("void SystemTheme::onlineImageReady(QNetworkReply*) Error in "
                              "QUrl(\"%1\") : \"Error transferring %1 - server replied: Not "
                              "Found\"");
        QTest::newRow("redirect") << QByteArray("302 Found") << QByteArray("Location: /b.png\r\n")
                                  << QStringLiteral("Failed to save online image... \"%2\"");
        QTest::newRow("no picture") << QByteArray("200 OK") << QByteArray()
                                    << QStringLiteral("Failed to save online image... \"%2\"");
    }

    void failedDownload()
    {
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, headers);
        QFETCH(QString, warning);
        OnlineSession session;
        session.server.answer(Path, "no picture", status, headers);
        QVERIFY(session.startAtRest());

        QVERIFY(session.set());

        warning.replace(QStringLiteral("%1"), session.server.url(Path).toString())
            .replace(QStringLiteral("%2"), session.saved);
        QVERIFY(session.daemon.waitForLine(warning));
        QCOMPARE(session.daemon.takeWarnings(), QStringList(warning));
        QVERIFY(!session.takeAnnouncements().contains(1));
        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(!QFile::exists(session.saved));
    }
};

QTEST_GUILESS_MAIN(OnlineThemeTest)

#include "tst_onlinetheme.moc"
