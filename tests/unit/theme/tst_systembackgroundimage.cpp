// SPDX-License-Identifier: BSD-3-Clause
#include "theme/systembackgroundimage.h"

#include "backgroundfixture.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "messagelog.h"
#include "notingbackgroundimage.h"
#include "paintedpicture.h"
#include "theme/backgroundpicture.h"

#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QTest>

namespace {

using Fixture = BackgroundFixture;

/// A path in a directory, with a hash that begins with a zero.
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

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A background image whose last step can be called by itself.
class OpenBackgroundImage : public SystemBackgroundImage
{
public:
    using SystemBackgroundImage::processAppWallpaper;
};

} // namespace

/// Tests the wallpapers of pictures and of moodsets in the present layout.
class SystemBackgroundImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NotingBackgroundImage::takeCalls(); }

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

        const Moodset built = NotingBackgroundImage().buildBackgroundImages(
            Fixture::recordOf(path), applicationImage, Fixture::Screen, rect, false);

        QVERIFY(built);
        const NotingBackgroundImage::Build& build = NotingBackgroundImage::lastBuild();
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
        QCOMPARE(NotingBackgroundImage::lastBuild().sourcePath, moodset->url.toLocalFile());
        QCOMPARE(NotingBackgroundImage::lastBuild().image.size(), QSize(96, 96));
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

        QCOMPARE(NotingBackgroundImage::takeCalls(), QStringList());
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
        NotingBackgroundImage::takeCalls();

        QVERIFY(!Fixture::build(built));

        QVERIFY(QFileInfo::exists(built->homeWallpaper));
        QCOMPARE(NotingBackgroundImage::takeCalls(), QStringList());
    }

    void moodsetWithoutItsPictureGivesNone()
    {
        const MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset("", 2);
        fixture.folder.remove(QStringLiteral("images/w.png"));

        QVERIFY(!Fixture::build(moodset));
    }

    void readerOfTheOldHomeWallpaperKeepsItWhole()
    {
        const MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), noisePicture(QSize(200, 120)));
        const Moodset first = Fixture::build(Fixture::recordOf(path));
        QFile reader(first->homeWallpaper);
        QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        const QByteArray old = contentOf(first->homeWallpaper);
        const QByteArray start = reader.read(old.size() / 2);
        fixture.writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(200, 120)));

        QVERIFY(Fixture::build(first));

        QVERIFY(contentOf(first->homeWallpaper) != old);
        QCOMPARE(start + reader.readAll(), old);
    }

    void bothWallpapersHaveThePicturesColourSpace_data()
    {
        QTest::addColumn<QByteArray>("content");
        QImage picture = noisePicture(QSize(200, 120));
        picture.setColorSpace(QColorSpace::AdobeRgb);
        QTest::newRow("JPEG") << encodedPicture(picture, "jpeg");
        QTest::newRow("PNG") << encodedPicture(picture, "png");
        QTest::newRow("transparent PNG")
            << encodedPicture(picture.convertToFormat(QImage::Format_ARGB32), "png");
        for (int orientation = 2; orientation <= 8; ++orientation) {
            QTest::addRow("orientation %d", orientation)
                << jpegWithExif(picture, exifBlock(QByteArray(), orientation));
        }
    }

    void bothWallpapersHaveThePicturesColourSpace()
    {
        QFETCH(QByteArray, content);
        const MessageLog log;
        Fixture fixture;
        fixture.folder.write(QStringLiteral("a.picture"), content);

        const Moodset built =
            Fixture::build(Fixture::recordOf(fixture.folder.path(QStringLiteral("a.picture"))));

        QVERIFY(built);
        const QColorSpace adobeRgb(QColorSpace::AdobeRgb);
        QCOMPARE(QImage(built->homeWallpaper).colorSpace(), adobeRgb);
        QCOMPARE(QImage(built->applicationWallpaper).colorSpace(), adobeRgb);
    }

    void wallpapersTellNothingElseOfThePicture_data()
    {
        QTest::addColumn<QByteArray>("content");
        QImage picture = noisePicture(QSize(200, 120));
        picture.setText(QStringLiteral("Comment"), QStringLiteral("a secret"));
        picture.setText(QStringLiteral("GPSLatitude"), QStringLiteral("a secret"));
        ExifBuilder exif;
        constexpr quint16 imageDescription = 0x010e;
        exif.text(imageDescription, "a secret").text(ExifBuilder::DateTime, "2020:01:02 03:04:05");
        const QByteArray xmp = xmpPacket(R"(xmp:Label="a secret")");
        QTest::newRow("JPEG") << jpegWithExif(picture, exif.block(), xmp);
        QTest::newRow("PNG") << pngWithExif(picture, exif.block(), xmp);
    }

    void wallpapersTellNothingElseOfThePicture()
    {
        QFETCH(QByteArray, content);
        const MessageLog log;
        Fixture fixture;
        fixture.folder.write(QStringLiteral("a.picture"), content);
        const QString path = fixture.folder.path(QStringLiteral("a.picture"));
        QVERIFY(content.contains("a secret"));

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QVERIFY(built);
        for (const QString& wallpaper : {built->homeWallpaper, built->applicationWallpaper}) {
            QCOMPARE(QImage(wallpaper).textKeys(), QStringList());
            QVERIFY(!contentOf(wallpaper).contains("a secret"));
            QVERIFY(!contentOf(wallpaper).contains("Exif"));
            QVERIFY(!contentOf(wallpaper).contains("2020:01:02"));
        }
    }

    void coloursDoNotDependOnTheColourSpace()
    {
        const MessageLog log;
        Fixture fixture;
        QImage picture = quadrantPicture(QSize(200, 120));
        const QString plain = fixture.writePicture(QStringLiteral("a.png"), picture);
        picture.setColorSpace(QColorSpace::ProPhotoRgb);
        const QString marked = fixture.writePicture(QStringLiteral("b.png"), picture);

        const Moodset ofPlain = Fixture::build(Fixture::recordOf(plain));
        const Moodset ofMarked = Fixture::build(Fixture::recordOf(marked));

        QCOMPARE(ofMarked->highlightColor, ofPlain->highlightColor);
        QCOMPARE(ofMarked->secondaryHighlightColor, ofPlain->secondaryHighlightColor);
        QCOMPARE(pixelsOf(ofMarked->applicationWallpaper), pixelsOf(ofPlain->applicationWallpaper));
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
            QStringList({QStringLiteral("ERROR writing file: \"Cannot open device for writing: "
                                        "Filename refers to a directory\"")}));
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
