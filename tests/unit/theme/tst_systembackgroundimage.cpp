// SPDX-License-Identifier: BSD-3-Clause
#include "theme/systembackgroundimage.h"

#include "backgroundfixture.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "theme/backgroundpicture.h"
#include "wallpapercalls.h"

#include <QFileInfo>
#include <QImageReader>
#include <QtTest>

namespace {

using Fixture = BackgroundFixture;

/// A path in a folder whose hash begins with a zero.
QString pathWithAShortHash(const TestFolder& folder)
{
    const int fullLength = QStringLiteral("/12345678hp.jpg").size();
    for (int i = 0;; ++i) {
        const QString path = folder.path(QStringLiteral("%1.png").arg(i));
        if (Fixture::homeWallpaperName(path).size() < fullLength) {
            return path;
        }
    }
}

/// A background image whose last step can be called by itself.
class OpenBackgroundImage : public SystemBackgroundImage
{
public:
    using SystemBackgroundImage::processAppWallpaper;
};

} // namespace

/// The wallpapers of pictures and of moodsets of the present layout.
class SystemBackgroundImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { WallpaperCalls::take(); }

    void outputDirectoryLiesInTheCache()
    {
        const MessageLog log;
        const Fixture fixture;

        QCOMPARE(SystemBackgroundImage().outputPath(), Fixture::outputDirectory());
    }

    void pictureGetsADarkenedHomeWallpaper()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), noisePicture(QSize(200, 120)));

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QVERIFY(built);
        const QString home = Fixture::outputDirectory() + Fixture::homeWallpaperName(path);
        QCOMPARE(built->homeWallpaper, home);
        const QImage square = loadBackgroundImage(path, Fixture::Screen);
        QCOMPARE(square.size(), QSize(96, 96));
        QCOMPARE(pixelsOf(home), asJpeg(darkened(square), 93));
        QVERIFY(pixelsOf(home) != asJpeg(darkened(square), 92));
        QVERIFY(pixelsOf(home) != asJpeg(darkened(square), 94));
    }

    void pictureGetsAnApplicationWallpaper()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QVERIFY(built);
        QCOMPARE(QFileInfo(built->applicationWallpaper).path(), Fixture::outputDirectory());
        const QImage wallpaper = pixelsOf(built->applicationWallpaper);
        QCOMPARE(wallpaper.size(), QSize(96, 96));
        QCOMPARE(quadrants(wallpaper), QStringLiteral("RGWB"));
    }

    void recordKeepsWhatItHas()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = fixture.writeMoodset("", 2);
        moodset->displayName = QStringLiteral("name");
        moodset->ringerVolume = 40;

        const Moodset built = Fixture::build(moodset);

        QCOMPARE(built->id, moodset->id);
        QCOMPARE(built->url, moodset->url);
        QCOMPARE(built->displayName, QStringLiteral("name"));
        QCOMPARE(built->ringerVolume, 40);
        QCOMPARE(built->version, 2);
    }

    void handleThatWasGivenKeepsItsRecord()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));
        const Moodset moodset = Fixture::recordOf(path);

        const Moodset built = Fixture::build(moodset);

        QVERIFY(built);
        QVERIFY(built.constData() != moodset.constData());
        QCOMPARE(moodset->homeWallpaper, QString());
        QCOMPARE(moodset->applicationWallpaper, QString());
        QVERIFY(!moodset->highlightColor.isValid());
    }

    void handleOfAMoodsetThatIsReadKeepsItsRecord()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = fixture.writeMoodset("{'wallpaper': 'w.png', 'version': 2}", 2);
        moodset->homeWallpaper.clear();
        const Moodset given = moodset;

        const Moodset built = Fixture::build(given, false);

        QVERIFY(built);
        QCOMPARE(given->homeWallpaper, QString());
        QCOMPARE(given.constData(), moodset.constData());
    }

    void sameRequestOverwritesItsFiles()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));
        const Moodset first = Fixture::build(Fixture::recordOf(path));
        fixture.writePicture(
            QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)).mirrored(true, false));

        const Moodset second = Fixture::build(first);

        QCOMPARE(second->homeWallpaper, first->homeWallpaper);
        QCOMPARE(second->applicationWallpaper, first->applicationWallpaper);
        QCOMPARE(Fixture::filesIn(Fixture::outputDirectory()).size(), 2);
        QCOMPARE(
            pixelsOf(second->homeWallpaper),
            asJpeg(darkened(loadBackgroundImage(path, Fixture::Screen)), 93));
        QCOMPARE(quadrants(pixelsOf(second->applicationWallpaper)), QStringLiteral("GRBW"));
    }

    void nameOfAHomeWallpaperHasNoLeadingZeros()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path = pathWithAShortHash(fixture.folder);
        fixture.writePicture(QFileInfo(path).fileName(), quadrantPicture(QSize(200, 120)));

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QCOMPARE(
            built->homeWallpaper, Fixture::outputDirectory() + Fixture::homeWallpaperName(path));
        QVERIFY(QFileInfo::exists(built->homeWallpaper));
    }

    void libraryGetsThePictureAsItIs()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));
        QImage applicationImage(3, 4, QImage::Format_RGB32);
        applicationImage.fill(Qt::blue);
        const QRectF rect(1, 2, 30, 40);

        const Moodset built = SystemBackgroundImage().buildBackgroundImages(
            Fixture::recordOf(path), applicationImage, Fixture::Screen, rect, false);

        QVERIFY(built);
        const WallpaperCalls::Build& build = WallpaperCalls::lastBuild();
        QCOMPARE(build.image, loadBackgroundImage(path, Fixture::Screen));
        QCOMPARE(build.sourcePath, path);
        QCOMPARE(build.applicationImage, applicationImage);
        QCOMPARE(build.rect, rect);
    }

    void moodsetsPictureIsUsedWhereItLies_data()
    {
        QTest::addColumn<bool>("wasValid");
        QTest::newRow("record is complete") << true;
        QTest::newRow("record is to be read") << false;
    }

    void moodsetsPictureIsUsedWhereItLies()
    {
        QFETCH(bool, wasValid);
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = fixture.writeMoodset("{'wallpaper': 'w.png', 'version': 2}", 2);
        if (!wasValid) {
            moodset->homeWallpaper.clear();
        }

        const Moodset built = Fixture::build(moodset, wasValid);

        QVERIFY(built);
        QCOMPARE(built->homeWallpaper, fixture.wallpaperPath());
        QCOMPARE(pixelsOf(fixture.wallpaperPath()), fixture.wallpaper());
        const QString application = QFileInfo(built->applicationWallpaper).fileName();
        QCOMPARE(Fixture::filesIn(Fixture::outputDirectory()), QStringList({application}));
        QCOMPARE(WallpaperCalls::lastBuild().sourcePath, moodset->url.toLocalFile());
        QCOMPARE(WallpaperCalls::lastBuild().image.size(), QSize(96, 96));
    }

    void fileOfACompleteRecordIsNotRead()
    {
        const MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset("no moodset", 2);

        QVERIFY(Fixture::build(moodset, true));
    }

    void fileOfAnIncompleteRecordIsRead()
    {
        const MessageLog log;
        Fixture fixture;
        const Moodset moodset =
            fixture.writeMoodset("{'wallpaper': 'w.png', 'version': 2, 'ringerVolume': 30}", 2);

        const Moodset built = Fixture::build(moodset, false);

        QVERIFY(built);
        QCOMPARE(built->ringerVolume, 30);
    }

    void fileThatIsNoMoodsetGivesNone()
    {
        const MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset("{}", 2);

        QVERIFY(!Fixture::build(moodset, false));

        QCOMPARE(WallpaperCalls::take(), QStringList());
    }

    void endingOfOtherCaseIsThatOfAPicture()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.Moodset"), quadrantPicture(QSize(200, 120)));

        const Moodset built = Fixture::build(Fixture::recordOf(path), false);

        QVERIFY(built);
        QCOMPARE(
            built->homeWallpaper, Fixture::outputDirectory() + Fixture::homeWallpaperName(path));
    }

    void pictureThatIsGoneGivesNone()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));
        const Moodset built = Fixture::build(Fixture::recordOf(path));
        fixture.folder.remove(QStringLiteral("a.png"));
        WallpaperCalls::take();

        QVERIFY(!Fixture::build(built));

        QVERIFY(QFileInfo::exists(built->homeWallpaper));
        QCOMPARE(WallpaperCalls::take(), QStringList());
    }

    void moodsetWithoutItsPictureGivesNone()
    {
        const MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset("", 2);
        fixture.folder.remove(QStringLiteral("images/w.png"));

        QVERIFY(!Fixture::build(moodset));
    }

    void homeWallpaperThatCannotBeWrittenIsLogged()
    {
        MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));
        const QString home = Fixture::outputDirectory() + Fixture::homeWallpaperName(path);
        QVERIFY(QDir().mkpath(home));

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QVERIFY(built);
        QCOMPARE(built->homeWallpaper, home);
        QVERIFY(QFileInfo::exists(built->applicationWallpaper));
        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral(
                "ERROR writing file: \"Cannot open device for writing: Is a directory\"")}));
    }

    void homeWallpaperIsWrittenInTheFormatOfItsSuffix_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("jpg") << QStringLiteral("a.jpg") << QByteArrayLiteral("jpeg");
        QTest::newRow("png") << QStringLiteral("a.png") << QByteArrayLiteral("png");
    }

    void homeWallpaperIsWrittenInTheFormatOfItsSuffix()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, format);
        const MessageLog log;
        const Fixture fixture;
        const QImage picture = quadrantPicture(QSize(20, 20));

        SystemBackgroundImage().writeHomeWallpaper(fixture.folder.path(name), picture, false);

        QCOMPARE(QImageReader::imageFormat(fixture.folder.path(name)), format);
    }

    void imageOfAHomeWallpaperIsNotChanged()
    {
        const MessageLog log;
        const Fixture fixture;
        const QImage picture = quadrantPicture(QSize(20, 20));

        SystemBackgroundImage().writeHomeWallpaper(
            fixture.folder.path(QStringLiteral("a.png")), picture, true);

        QCOMPARE(picture, quadrantPicture(QSize(20, 20)));
        QCOMPARE(pixelsOf(fixture.folder.path(QStringLiteral("a.png"))), darkened(picture));
    }

    void nullImageIsNotWritten()
    {
        MessageLog log;
        const Fixture fixture;

        SystemBackgroundImage().writeHomeWallpaper(
            fixture.folder.path(QStringLiteral("a.jpg")), QImage(), true);

        QVERIFY(!QFileInfo::exists(fixture.folder.path(QStringLiteral("a.jpg"))));
        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral("ERROR writing file: \"Image is empty\"")}));
    }

    void lastStepHasTheLibrarysResult()
    {
        MessageLog log;
        const Fixture fixture;
        OpenBackgroundImage background;
        QImage image = quadrantPicture(QSize(20, 20));
        VelmoorZerlinBackground::buildBackgroundImageForPortrait(
            &background, image, QStringLiteral("a"), QImage(), QRectF(image.rect()));

        QCOMPARE(background.processAppWallpaper(&image), true);
        QVERIFY(QDir(Fixture::outputDirectory()).removeRecursively());
        QCOMPARE(background.processAppWallpaper(&image), false);

        QCOMPARE(log.takeWarnings().size(), 1);
    }
};

QTEST_GUILESS_MAIN(SystemBackgroundImageTest)

#include "tst_systembackgroundimage.moc"
