// SPDX-License-Identifier: BSD-3-Clause
#include "dconfcommand.h"
#include "encodedpicture.h"
#include "httpserver.h"
#include "themekeys.h"
#include "themesession.h"

#include <QImage>
#include <QTest>

using ThemeKeys::written;

namespace {

/// A daemon with a bundle that sets everything that a moodset can set.
struct BundleSession : ThemeSession
{
    bool startAtRest()
    {
        return write("Sea") && InstalledBundles::write(tone, "r")
            && InstalledBundles::write(entry, "[Desktop]") && ThemeSession::startAtRest();
    }

    static bool write(const QByteArray& name)
    {
        return writeBundle(
            QStringLiteral("a"),
            R"({
            "wallpaper": "w.png", "version": 2, "ringerVolume": 20, "partnerSpace": "music",
            "ringerToneFile": {"file": "r.ogg"}, "chatToneFile": {"enabled": 0},
            "displayName": ")"
                + name + R"("})");
    }

    /// Kills the daemon, and checks that the whole theme is stored.
    bool leavesThemeWhenKilled() { return daemon.kill() && isThemeStored() && areTonesStored(); }

    const QString path = bundleFile(QStringLiteral("a"));
    const QString tone = InstalledBundles::folder() + QStringLiteral("a/sounds/r.ogg");
    const QString entry = QStringLiteral("/usr/share/applications/music.desktop");

private:
    bool isThemeStored()
    {
        QStringList keys = ThemeKeys::ofMoodset(library(), path, path);
        keys.append(written(ThemeKeys::PartnerSpace, entry));
        keys.sort();
        return theme() == keys;
    }

    bool areTonesStored() const
    {
        const QString general = profileFolder() + QStringLiteral("general/");
        return profile()
            == QStringList(
                   {written(profileFolder() + QStringLiteral("active"), QStringLiteral("general")),
                    written(general + QStringLiteral("im.alert.enabled"), QStringLiteral("Off")),
                    written(
                        general + QStringLiteral("ringing.alert.enabled"), QStringLiteral("On")),
                    written(general + QStringLiteral("ringing.alert.tone"), tone),
                    written(
                        general + QStringLiteral("ringing.alert.volume"), QStringLiteral("20"))});
    }
};

/// Four colours that no picture of the test has.
QVariantMap colors()
{
    return {
        {QStringLiteral("highlightColor"), QStringLiteral("#ff010203")},
        {QStringLiteral("secondaryHighlightColor"), QStringLiteral("#ff040506")},
        {QStringLiteral("primaryColor"), QStringLiteral("#ff070809")},
        {QStringLiteral("secondaryColor"), QStringLiteral("#ff0a0b0c")}};
}

} // namespace

/// Tests what is stored if the daemon is killed right after it has replied or announced something.
class DurabilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answeredThemeSurvivesAKill()
    {
        BundleSession session;
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(session.path));

        QVERIFY(session.leavesThemeWhenKilled());
    }

    void answeredEditSurvivesAKill()
    {
        BundleSession session;
        QVERIFY(session.startAtRest());
        QVERIFY(ThemeSession::set(session.path));

        QVERIFY(session.edit(session.path, colors()));

        QVERIFY(session.leavesThemeWhenKilled());
        QCOMPARE(UserStore::value(ThemeKeys::SecondaryColor), QStringLiteral("'#ff0a0b0c'"));
    }

    void editIsAnsweredOnceItIsStored()
    {
        BundleSession session;
        QVERIFY(session.startAtRest());
        QVERIFY(ThemeSession::set(session.path));
        PausedDconfService store;
        QVERIFY(store.isPaused());

        const QDBusPendingCall edit = session.callEdit(session.path, colors());

        QTRY_VERIFY_WITH_TIMEOUT(
            edit.isFinished() || session.daemon.isWaitingForAThread(), DaemonProcess::deadlineMs);
        QVERIFY(!edit.isFinished());
        store.resume();
        QTRY_VERIFY_WITH_TIMEOUT(edit.isFinished(), DaemonProcess::deadlineMs);
        QVERIFY(session.leavesThemeWhenKilled());
    }

    void newVersionIsAnnouncedOnceItsColoursAreStored()
    {
        BundleSession session;
        QVERIFY(session.startAtRest());
        QVERIFY(ThemeSession::set(session.path));
        const QStringList theme = ThemeSession::theme();
        for (const QString& key : ThemeKeys::names().filter(QStringLiteral("/color/"))) {
            UserStore::write(key, QStringLiteral("'foreign'"));
        }
        QVERIFY(session.forgetAnnouncements());
        QVERIFY(BundleSession::write("Lake"));
        PausedDconfService store;
        QVERIFY(store.isPaused());

        BusClient::send(
            QStringLiteral("installPackage"), {InstalledBundles::folder() + QStringLiteral("a")});

        const auto isAnnounced = [&] { return session.client.announcements().contains(1); };
        QTRY_VERIFY_WITH_TIMEOUT(
            isAnnounced() || session.daemon.isWaitingForAThread(), DaemonProcess::deadlineMs);
        QVERIFY(!isAnnounced());
        store.resume();
        QTRY_VERIFY_WITH_TIMEOUT(isAnnounced(), DaemonProcess::deadlineMs);
        QVERIFY(session.daemon.kill());
        QCOMPARE(ThemeSession::theme(), theme);
    }

    void announcedDownloadSurvivesAKill()
    {
        ThemeSession session;
        HttpServer server;
        const QString path = QStringLiteral("/a.png");
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::green);
        server.answer(path, encodedPicture(picture, "png"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(server.url(path)));

        QTRY_VERIFY_WITH_TIMEOUT(
            session.client.announcements().contains(1), DaemonProcess::deadlineMs);
        QVERIFY(session.daemon.kill());
        QCOMPARE(
            ThemeSession::theme(),
            session.expectedTheme(
                session.folders.picture(QStringLiteral("online_img0.jpg")), QString()));
        QCOMPARE(ThemeSession::profile().size(), 2);
        session.daemon.takeWarnings();
    }
};

QTEST_GUILESS_MAIN(DurabilityTest)

#include "tst_durability.moc"
