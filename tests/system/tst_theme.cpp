// SPDX-License-Identifier: BSD-3-Clause
#include "exifbuilder.h"
#include "paintedpicture.h"
#include "themekeys.h"
#include "themesession.h"

#include <QImageReader>
#include <QTest>

using ThemeKeys::written;

namespace {

const QString Coast = InstalledBundles::folder() + QStringLiteral("coast-light/");
const QString CoastFile = Coast + QStringLiteral("coast-light.moodset");

const QSize Square(ThemeSession::ScreenHeight, ThemeSession::ScreenHeight);

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

/// A value of the general profile.
QString general(const char* key, const QString& text)
{
    return written(
        ThemeSession::profileFolder() + QStringLiteral("general/") + QLatin1String(key), text);
}

QString activeProfile(const QString& name)
{
    return written(ThemeSession::profileFolder() + QStringLiteral("active"), name);
}

/// The image as it was before it was darkened as a home wallpaper.
QImage lightened(QImage image)
{
    constexpr int share = 148; // in 256 parts
    image = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            const auto lighter = [](int channel) { return qMin(255, channel * 256 / share); };
            image.setPixelColor(
                x, y, QColor(lighter(color.red()), lighter(color.green()), lighter(color.blue())));
        }
    }
    return image;
}

} // namespace

/// Tests what the daemon sets when a client applies bundles and local pictures.
class ThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bundleIsInTheKeys()
    {
        ThemeSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(CoastFile));

        QCOMPARE(
            ThemeSession::theme(),
            sorted(
                {written(ThemeKeys::Picture, CoastFile),
                 written(
                     ThemeKeys::HomeWallpaper, Coast + QStringLiteral("images/coast-light.jpg")),
                 written(
                     ThemeKeys::ApplicationWallpaper,
                     ThemeSession::applicationWallpaper(CoastFile)),
                 written(ThemeKeys::HighlightColor, QStringLiteral("#ff6fc3f7")),
                 written(ThemeKeys::SecondaryHighlightColor, QStringLiteral("#ff4a90b8")),
                 written(ThemeKeys::PrimaryColor, QStringLiteral("#ffffffff")),
                 written(ThemeKeys::SecondaryColor, QStringLiteral("#b0ffffff")),
                 written(ThemeKeys::ActiveMoodset, CoastFile),
                 written(ThemeKeys::PartnerSpace, QString())}));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void bundleIsInTheProfile()
    {
        ThemeSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(CoastFile));

        const QString sounds = Coast + QStringLiteral("sounds/");
        const QString on = QStringLiteral("On");
        QCOMPARE(
            ThemeSession::profile(),
            sorted(
                {activeProfile(QStringLiteral("general")),
                 general("ringing.alert.volume", QStringLiteral("60")),
                 general("ringing.alert.tone", sounds + QStringLiteral("tide.ogg")),
                 general("ringing.alert.enabled", on),
                 general("sms.alert.tone", sounds + QStringLiteral("gull.ogg")),
                 general("sms.alert.enabled", on),
                 general("calendar.alert.tone", sounds + QStringLiteral("buoy.ogg")),
                 general("calendar.alert.enabled", on),
                 general("im.alert.enabled", QStringLiteral("Off"))}));
    }

    void bundlesRowGetsItsApplicationWallpaper()
    {
        ThemeSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(CoastFile));

        QCOMPARE(
            session.library().moodset(
                CoastFile, QStringLiteral("homeWallpaper, applicationWallpaper, version")),
            QStringList(
                {Coast + QStringLiteral("images/coast-light.jpg"),
                 ThemeSession::applicationWallpaper(CoastFile), QStringLiteral("2")}));
        QCOMPARE(QImage(ThemeSession::applicationWallpaper(CoastFile)).size(), Square);
        QVERIFY(!QFile::exists(ThemeSession::homeWallpaper(CoastFile)));
    }

    void bundleIsAnnouncedOnce()
    {
        ThemeSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(CoastFile));

        QCOMPARE(session.takeAnnouncements(), QList<int>{1});
    }

    void bundleOfTheOlderLayoutIsConvertedOnce()
    {
        const QString build =
            QStringLiteral("Moodset SystemBackgroundImage::buildBackgroundImages(const Moodset&, "
                           "const QImage&, const QSize&, const QRectF&, bool)");
        const QString snow = InstalledBundles::folder() + QStringLiteral("first-snow/");
        const QString file = snow + QStringLiteral("first-snow.moodset");
        const QString picture = snow + QStringLiteral("images/first-snow.jpg");
        const QString home = QFileInfo(ThemeSession::homeWallpaper(file)).path()
            + QStringLiteral("/legacy/") + wallpaperName(file, QStringLiteral("hp.jpg"));
        ThemeSession session;
        QVERIFY(InstalledBundles::installSample(QStringLiteral("first-snow")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(file));
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(
                build + QStringLiteral(" using legacy moodset image  \"%1\"").arg(picture)));
        QCOMPARE(QImage(home).size(), QSize(ThemeSession::ScreenWidth, ThemeSession::ScreenHeight));
        QVERIFY(QFile::remove(picture));
        QVERIFY(ThemeSession::set(file));

        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(
                build
                + QStringLiteral(" using cached legacy moodset image from  \"%1\"").arg(home)));
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(file));
        QCOMPARE(UserStore::value(ThemeKeys::HomeWallpaper), QStringLiteral("'%1'").arg(home));
    }

    void silentBundleSilencesThePhone()
    {
        ThemeSession session;
        QVERIFY(ThemeSession::writeBundle(
            QStringLiteral("calm"), R"({"wallpaper": "w.png", "version": 2, "ringerVolume": 0})"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(ThemeSession::bundleFile(QStringLiteral("calm"))));

        QCOMPARE(
            ThemeSession::profile(),
            sorted(
                {activeProfile(QStringLiteral("silent")),
                 general("ringing.alert.volume", QStringLiteral("0"))}));
    }

    void bundleWithoutColoursHasThoseOfItsPicture()
    {
        const QString file = ThemeSession::bundleFile(QStringLiteral("plain"));
        ThemeSession session;
        QVERIFY(ThemeSession::writeBundle(
            QStringLiteral("plain"), R"({"wallpaper": "w.png", "version": 2})"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(file));

        QCOMPARE(UserStore::value(ThemeKeys::HighlightColor), QStringLiteral("'#ffff7f7f'"));
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(file));
    }

    void partnerSpaceOfABundleIsHandedOn()
    {
        const QString entry = QStringLiteral("/usr/share/applications/music.desktop");
        ThemeSession session;
        QVERIFY(InstalledBundles::write(entry, "[Desktop Entry]"));
        QVERIFY(ThemeSession::writeBundle(
            QStringLiteral("loud"),
            R"({"wallpaper": "w.png", "version": 2, "partnerSpace": "music"})"));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(ThemeSession::bundleFile(QStringLiteral("loud"))));
        QCOMPARE(UserStore::value(ThemeKeys::PartnerSpace), QStringLiteral("'%1'").arg(entry));
        QVERIFY(ThemeSession::set(CoastFile));

        QCOMPARE(UserStore::value(ThemeKeys::PartnerSpace), QStringLiteral("''"));
    }

    void partnerSpaceWithoutAnEntryIsLogged()
    {
        ThemeSession session;
        QVERIFY(ThemeSession::writeBundle(
            QStringLiteral("loud"),
            R"({"wallpaper": "w.png", "version": 2, "partnerSpace": "music"})"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(ThemeSession::bundleFile(QStringLiteral("loud"))));

        QCOMPARE(UserStore::value(ThemeKeys::PartnerSpace), QStringLiteral("''"));
        QCOMPARE(
            session.daemon.takeWarnings(),
            QStringList(QStringLiteral(
                "void PartnerSpaceManager::setPartnerSpace(const QString&) Failed to find .desktop "
                "file for partner space! \"/usr/share/applications/music.desktop\"")));
    }

    void pictureIsInTheKeys()
    {
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(
            ThemeSession::theme(),
            sorted(
                {written(ThemeKeys::Picture, path),
                 written(ThemeKeys::HomeWallpaper, ThemeSession::homeWallpaper(path)),
                 written(ThemeKeys::ApplicationWallpaper, ThemeSession::applicationWallpaper(path)),
                 written(ThemeKeys::HighlightColor, QStringLiteral("#ffff7f7f")),
                 written(ThemeKeys::SecondaryHighlightColor, QStringLiteral("#ffcc6666")),
                 written(ThemeKeys::PrimaryColor, QStringLiteral("#ffffffff")),
                 written(ThemeKeys::SecondaryColor, QStringLiteral("#b0ffffff")),
                 written(ThemeKeys::ActiveMoodset, path),
                 written(ThemeKeys::PartnerSpace, QString())}));
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void pictureLeavesTheTonesAsTheyAre()
    {
        const QString tone =
            ThemeSession::profileFolder() + QStringLiteral("general/ringing.alert.tone");
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        UserStore::write(tone, QStringLiteral("'/own.ogg'"));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(
            ThemeSession::profile(),
            sorted(
                {activeProfile(QStringLiteral("general")),
                 general("ringing.alert.volume", QStringLiteral("80")),
                 written(tone, QStringLiteral("/own.ogg"))}));
    }

    void pictureHasTwoSquareWallpapers()
    {
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QImageReader home(ThemeSession::homeWallpaper(path));
        QCOMPARE(home.size(), Square);
        QCOMPARE(home.format(), QByteArray("jpeg"));
        QImageReader application(ThemeSession::applicationWallpaper(path));
        QCOMPARE(application.size(), Square);
        QCOMPARE(application.format(), QByteArray("jpeg"));
    }

    void pictureBecomesARowAndIsAnnouncedOnce()
    {
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(session.takeAnnouncements(), QList<int>{1});
        QCOMPARE(
            session.library().moodset(
                path,
                QStringLiteral("homeWallpaper, applicationWallpaper, highlightColor, "
                               "secondaryHighlightColor, primaryColor, secondaryColor, "
                               "ringerVolume, enabledSounds, favorite, partnerSpace, version")),
            QStringList(
                {ThemeSession::homeWallpaper(path), ThemeSession::applicationWallpaper(path),
                 QStringLiteral("#ffff7f7f"), QStringLiteral("#ffcc6666"),
                 QStringLiteral("#ffffffff"), QStringLiteral("#b0ffffff"), QStringLiteral("80"),
                 QStringLiteral("-1"), QStringLiteral("0"), QString(), QStringLiteral("2")}));
    }

    void pictureThatIsInNoWatchedFolderIsEntered()
    {
        ThemeSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());
        QCOMPARE(session.fileId(path), 0);

        QVERIFY(ThemeSession::set(path));

        QVERIFY(session.fileId(path) != 0);
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(path));
    }

    void nameOfAnyKindIsInTheKeys()
    {
        ThemeSession session;
        const QString path = session.folders.picture(QString::fromUtf8("100% ä#b?%1 c.png"));
        QVERIFY(ThemeSession::writePicture(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(UserStore::value(ThemeKeys::Picture), QStringLiteral("'%1'").arg(path));
        QCOMPARE(ThemeSession::theme(), session.expectedTheme(path));
    }

    void turnedPictureStandsUpright_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QString>("colours");
        QTest::newRow("as stored") << 1 << QStringLiteral("RGWB");
        QTest::newRow("upside down") << 3 << QStringLiteral("WBRG");
        QTest::newRow("on its left side") << 6 << QStringLiteral("BRGW");
        QTest::newRow("on its right side") << 8 << QStringLiteral("GWBR");
    }

    void turnedPictureStandsUpright()
    {
        QFETCH(int, orientation);
        QFETCH(QString, colours);
        ThemeSession session;
        const QString path = session.folders.picture(QStringLiteral("a.jpg"));
        QVERIFY(InstalledBundles::write(
            path,
            jpegWithExif(quadrantPicture(QSize(400, 240)), exifBlock(QByteArray(), orientation))));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        const QImage home(ThemeSession::homeWallpaper(path));
        QCOMPARE(home.size(), Square);
        QCOMPARE(quadrants(lightened(home)), colours);
        QCOMPARE(quadrants(QImage(ThemeSession::applicationWallpaper(path))), colours);
    }
};

QTEST_GUILESS_MAIN(ThemeTest)

#include "tst_theme.moc"
