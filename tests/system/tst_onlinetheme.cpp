// SPDX-License-Identifier: BSD-3-Clause
#include "httpserver.h"
#include "themekeys.h"
#include "themesession.h"

#include <QBuffer>
#include <QImage>
#include <QtTest>

namespace {

const QString Path = QStringLiteral("/a.png");

/// A blue picture, as a server sends it; empty if it cannot be made.
QByteArray picture()
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(QColor(0, 64, 255));
    QByteArray data;
    QBuffer buffer(&data);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png") ? data : QByteArray();
}

/// A daemon with a server that has a picture.
struct OnlineSession : ThemeSession
{
    OnlineSession() { server.answer(Path, picture()); }

    bool set() { return ThemeSession::set(server.url(Path)); }
    bool waitForTheme()
    {
        return QTest::qWaitFor(
            [this] { return UserStore::value(ThemeKeys::activeMoodset) == inStore(saved); },
            DaemonProcess::deadlineMs);
    }
    bool waitForMoodset()
    {
        return QTest::qWaitFor(
            [this] { return !library().moodset(saved, QStringLiteral("version")).isEmpty(); },
            DaemonProcess::deadlineMs);
    }

    static QString inStore(const QString& text)
    {
        return QLatin1Char('\'') + text + QLatin1Char('\'');
    }

    HttpServer server;
    const QString saved = folders.picture(QStringLiteral("online_img0.jpg"));
};

} // namespace

/// What becomes of pictures on the network when a client makes them the theme.
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
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(session.saved, QString()));
        QCOMPARE(UserStore::value(ThemeKeys::picture), QStringLiteral("''"));
        QCOMPARE(
            UserStore::value(ThemeKeys::homeWallpaper),
            OnlineSession::inStore(ThemeSession::homeWallpaper(session.saved)));
        QCOMPARE(
            UserStore::value(ThemeKeys::applicationWallpaper),
            OnlineSession::inStore(ThemeSession::applicationWallpaper(session.saved)));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }
};

QTEST_GUILESS_MAIN(OnlineThemeTest)

#include "tst_onlinetheme.moc"
