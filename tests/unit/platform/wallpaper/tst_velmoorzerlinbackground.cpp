// SPDX-License-Identifier: BSD-3-Clause
#include "velmoorzerlinbackground.h"

#include "messagelog.h"
#include "recordingbackground.h"
#include "samplepictures.h"
#include "testfolder.h"

#include <QColorSpace>
#include <QDir>
#include <QImageReader>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

const QString Source = QStringLiteral("/home/user/Pictures/a %1 tree.jpg");

/// The name that is made from Source, by the hash that multiplies with 31.
QString fileNameOf(const QString& source)
{
    uint hash = 0;
    for (const QChar unit : source) {
        hash = 31 * hash + unit.unicode();
    }
    return QString::number(hash, 16) + QStringLiteral("ap.jpg");
}

void build(
    VelmoorZerlinBackground* background, const QImage& image, const QImage& applicationImage = {},
    const QRectF& rect = QRectF(0, 0, 960, 960))
{
    VelmoorZerlinBackground::buildBackgroundImageForPortrait(
        background, image, Source, applicationImage, rect);
}

QImage plainPicture(const QColor& color, const QSize& size = QSize(60, 50))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
        .size();
}

/// What the override receives for a picture with other parameters than the default.
QImage wallpaperWith(const QImage& picture, float ratio, int rounds, int radius, double sigma)
{
    const TestFolder folder;
    RecordingBackground background(folder.path());
    background.setPixelRatio(ratio);
    background.setBlurRounds(rounds);
    background.setBlurRadius(radius);
    background.setBlurSigma(sigma);
    build(&background, picture);
    return background.wallpaper;
}

} // namespace

class VelmoorZerlinBackgroundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOutputFolderIsMade();
    void thereIsNoWallpaperBeforeTheFirstBuild();
    void theWallpaperIsNamedAfterItsSource();
    void theFileIsTheWallpaperThatTheOverrideSaw();
    void theOverridesChangesAreWritten();
    void anotherBuildOverwrites();
    void theSourceStaysAsItIs();
    void anApplicationImageTakesThePicturesPlace();
    void onlyWhatLiesInTheRectangleCounts_data();
    void onlyWhatLiesInTheRectangleCounts();
    void everyFormatIsTaken_data();
    void everyFormatIsTaken();
    void blackShowsThroughTransparentPixels();
    void theColourSpaceIsThatOfThePicture_data();
    void theColourSpaceIsThatOfThePicture();
    void everySizeIsTaken_data();
    void everySizeIsTaken();
    void theParametersAreThoseOfTheNextBuild();
    void unsetParametersAreTheDefaults();
    void theRatioScalesTheBlur();
    void parametersOutOfRangeCountAsTheNearest();
    void whatIsNoNumberCountsAsZero();
    void aReaderOfTheOldFileKeepsItWhole();
    void nothingButTheWallpaperIsLeft();
    void aFailedWriteWarns_data();
    void aFailedWriteWarns();
    void aNullImageIsHandedOverAndWarns();
    void noThreadIsStarted();
};

void VelmoorZerlinBackgroundTest::theOutputFolderIsMade()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("cache/bg images"));

    const VelmoorZerlinBackground background(path);

    QCOMPARE(background.outputPath(), path);
    QVERIFY(QFileInfo(path).isDir());
}

void VelmoorZerlinBackgroundTest::thereIsNoWallpaperBeforeTheFirstBuild()
{
    const TestFolder folder;

    QCOMPARE(VelmoorZerlinBackground(folder.path()).appImagePath(), QString());
}

void VelmoorZerlinBackgroundTest::theWallpaperIsNamedAfterItsSource()
{
    MessageLog log;
    const TestFolder folder;
    // The name of a directory is not a pattern.
    const QString path = folder.path(QStringLiteral("%1"));
    RecordingBackground background(path);

    build(&background, plainPicture(Qt::red));

    QCOMPARE(background.appImagePath(), path + QLatin1Char('/') + fileNameOf(Source));
    QVERIFY(QFileInfo::exists(background.appImagePath()));
    QVERIFY(background.isWritten);
}

void VelmoorZerlinBackgroundTest::theFileIsTheWallpaperThatTheOverrideSaw()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());

    build(&background, gradientPicture({200, 180}));

    QCOMPARE(background.calls, 1);
    QImageReader reader(background.appImagePath());
    QCOMPARE(reader.format(), QByteArray("jpeg"));
    const QImage written = reader.read();
    QCOMPARE(written.size(), background.wallpaper.size());
    for (const QPoint& point : {QPoint(3, 5), QPoint(100, 90), QPoint(190, 20)}) {
        const QColor expected = background.wallpaper.pixelColor(point);
        QVERIFY(qAbs(written.pixelColor(point).red() - expected.red()) <= 4);
        QVERIFY(qAbs(written.pixelColor(point).green() - expected.green()) <= 4);
        QVERIFY(qAbs(written.pixelColor(point).blue() - expected.blue()) <= 4);
    }
}

void VelmoorZerlinBackgroundTest::theOverridesChangesAreWritten()
{
    struct Whitening : VelmoorZerlinBackground
    {
        using VelmoorZerlinBackground::VelmoorZerlinBackground;
        bool processAppWallpaper(QImage* image) override
        {
            image->fill(Qt::white);
            return VelmoorZerlinBackground::processAppWallpaper(image);
        }
    };
    MessageLog log;
    const TestFolder folder;
    Whitening background(folder.path());

    build(&background, plainPicture(Qt::black));

    QCOMPARE(QImage(background.appImagePath()).pixelColor(20, 20), QColor(Qt::white));
}

void VelmoorZerlinBackgroundTest::anotherBuildOverwrites()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    build(&background, plainPicture(Qt::black));
    const QString path = background.appImagePath();

    build(&background, plainPicture(Qt::white));

    QCOMPARE(background.appImagePath(), path);
    QCOMPARE(QImage(path).pixelColor(20, 20), QColor(Qt::white));
}

void VelmoorZerlinBackgroundTest::theSourceStaysAsItIs()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    const QImage picture = noisePicture({120, 110});

    build(&background, picture);

    QCOMPARE(picture, noisePicture({120, 110}));
    QVERIFY(background.wallpaper != picture);
}

void VelmoorZerlinBackgroundTest::anApplicationImageTakesThePicturesPlace()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());

    build(&background, plainPicture(Qt::red), plainPicture(Qt::blue, {30, 20}));

    QCOMPARE(background.wallpaper.size(), QSize(30, 20));
    QCOMPARE(background.wallpaper.pixelColor(10, 10), QColor(Qt::blue));
    QCOMPARE(background.appImagePath(), folder.path(fileNameOf(Source)));
}

void VelmoorZerlinBackgroundTest::onlyWhatLiesInTheRectangleCounts_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QRect>("part");

    const QRect whole(0, 0, 60, 50);
    QTest::newRow("larger") << QRectF(0, 0, 960, 960) << whole;
    QTest::newRow("the same") << QRectF(whole) << whole;
    QTest::newRow("a part") << QRectF(10, 20, 30, 25) << QRect(10, 20, 30, 25);
    QTest::newRow("fractions") << QRectF(9.5, 20.5, 2, 2) << QRect(9, 20, 3, 3);
    QTest::newRow("across the border") << QRectF(40, 30, 100, 100) << QRect(40, 30, 20, 20);
    QTest::newRow("outside") << QRectF(100, 100, 10, 10) << whole;
    QTest::newRow("empty") << QRectF() << whole;
}

void VelmoorZerlinBackgroundTest::onlyWhatLiesInTheRectangleCounts()
{
    QFETCH(QRectF, rect);
    QFETCH(QRect, part);
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    background.setBlurRounds(0);
    const QImage picture = gradientPicture({60, 50});

    build(&background, picture, {}, rect);

    QCOMPARE(background.wallpaper, picture.copy(part));
}

void VelmoorZerlinBackgroundTest::everyFormatIsTaken_data()
{
    QTest::addColumn<QImage::Format>("format");

    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        if (format != QImage::Format_Alpha8) { // has no colours
            QTest::addRow("format %d", format) << QImage::Format(format);
        }
    }
}

void VelmoorZerlinBackgroundTest::everyFormatIsTaken()
{
    QFETCH(QImage::Format, format);
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    background.setBlurRounds(0);
    // The width is odd, so that rows of small pixels end with padding.
    const QImage picture = edgePicture({61, 45}, {20, 30}).convertToFormat(format);

    build(&background, picture, {}, QRectF(9, 5, 41, 33));

    QCOMPARE(background.wallpaper, edgePicture({61, 45}, {20, 30}).copy(9, 5, 41, 33));
}

void VelmoorZerlinBackgroundTest::blackShowsThroughTransparentPixels()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    QImage picture(40, 40, QImage::Format_ARGB32);
    picture.fill(qRgba(255, 255, 255, 51));

    build(&background, picture);

    QCOMPARE(background.wallpaper.pixel(20, 20), qRgb(51, 51, 51));
}

void VelmoorZerlinBackgroundTest::theColourSpaceIsThatOfThePicture_data()
{
    QTest::addColumn<QImage::Format>("format");

    QTest::newRow("opaque") << QImage::Format_RGB32;
    QTest::newRow("transparent") << QImage::Format_ARGB32;
}

void VelmoorZerlinBackgroundTest::theColourSpaceIsThatOfThePicture()
{
    QFETCH(QImage::Format, format);
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    QImage picture = gradientPicture({60, 50}).convertToFormat(format);
    picture.setColorSpace(QColorSpace::AdobeRgb);

    build(&background, picture);
    background.darken(&picture);

    QCOMPARE(QImage(background.appImagePath()).colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
    QCOMPARE(picture.colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
}

void VelmoorZerlinBackgroundTest::everySizeIsTaken_data()
{
    QTest::addColumn<QSize>("size");

    for (const QSize& size :
         {QSize(1, 1), QSize(1, 5000), QSize(5000, 1), QSize(47, 53), QSize(301, 207)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void VelmoorZerlinBackgroundTest::everySizeIsTaken()
{
    QFETCH(QSize, size);
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());

    build(&background, noisePicture(size), {}, QRectF(QPointF(), size));

    QCOMPARE(QImageReader(background.appImagePath()).size(), size);
}

void VelmoorZerlinBackgroundTest::theParametersAreThoseOfTheNextBuild()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    const QImage picture = noisePicture({90, 80});

    build(&background, picture);
    const QImage blurred = background.wallpaper;
    background.setBlurRounds(0);
    build(&background, picture);

    QVERIFY(blurred != picture);
    QCOMPARE(background.wallpaper, picture);
}

void VelmoorZerlinBackgroundTest::unsetParametersAreTheDefaults()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    const QImage picture = noisePicture({90, 80});

    build(&background, picture);

    QCOMPARE(background.wallpaper, wallpaperWith(picture, 1, 15, 4, 1.3));
}

void VelmoorZerlinBackgroundTest::theRatioScalesTheBlur()
{
    MessageLog log;
    const QImage picture = noisePicture({90, 80});

    QCOMPARE(wallpaperWith(picture, 2, 9, 4, 1.25), wallpaperWith(picture, 1, 9, 8, 2.5));
}

void VelmoorZerlinBackgroundTest::parametersOutOfRangeCountAsTheNearest()
{
    MessageLog log;
    const QImage picture = noisePicture({40, 30});
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();

    QCOMPARE(wallpaperWith(picture, 1, most, 4, 1.3), wallpaperWith(picture, 1, 100, 4, 1.3));
    QCOMPARE(wallpaperWith(picture, 1, 2, most, 3), wallpaperWith(picture, 1, 2, 32, 3));
    QCOMPARE(wallpaperWith(picture, 1, 2, 4, 1e300), wallpaperWith(picture, 1, 2, 4, 32));
    QCOMPARE(wallpaperWith(picture, 1e30F, 2, 4, 1), wallpaperWith(picture, 8, 2, 4, 1));
    QCOMPARE(wallpaperWith(picture, 1, least, 4, 1.3), picture);
    QCOMPARE(wallpaperWith(picture, 1, 15, least, 1.3), picture);
    QCOMPARE(wallpaperWith(picture, 1, 15, 4, -1), picture);
    QCOMPARE(wallpaperWith(picture, -1, 15, 4, 1.3), picture);
}

void VelmoorZerlinBackgroundTest::whatIsNoNumberCountsAsZero()
{
    MessageLog log;
    const QImage picture = noisePicture({40, 30});

    QCOMPARE(wallpaperWith(picture, std::nanf(""), 15, 4, 1.3), picture);
    QCOMPARE(wallpaperWith(picture, 1, 15, 4, std::nan("")), picture);
}

void VelmoorZerlinBackgroundTest::aReaderOfTheOldFileKeepsItWhole()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    build(&background, noisePicture({300, 300}));
    const QByteArray old = contentOf(background.appImagePath());
    QFile reader(background.appImagePath());
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const QByteArray start = reader.read(old.size() / 2);

    build(&background, plainPicture(Qt::green));

    QCOMPARE(start + reader.readAll(), old);
    QVERIFY(contentOf(background.appImagePath()) != old);
}

void VelmoorZerlinBackgroundTest::nothingButTheWallpaperIsLeft()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());

    build(&background, plainPicture(Qt::green));
    build(&background, {});

    log.takeWarnings();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(folder.path()).entryList(all), QStringList(fileNameOf(Source)));
}

void VelmoorZerlinBackgroundTest::aFailedWriteWarns_data()
{
    QTest::addColumn<QString>("folderName");
    QTest::addColumn<QString>("error");

    QTest::newRow("a folder has the wallpaper's name")
        << QStringLiteral("cache")
        << QStringLiteral("Cannot open device for writing: Filename refers to a directory");
    QTest::newRow("the folder cannot be made")
        << QStringLiteral("file/cache")
        << QStringLiteral("Cannot open device for writing: Not a directory");
}

void VelmoorZerlinBackgroundTest::aFailedWriteWarns()
{
    QFETCH(QString, folderName);
    QFETCH(QString, error);
    MessageLog log;
    TestFolder folder;
    folder.write(QStringLiteral("file"));
    folder.makeDirectory(QStringLiteral("cache/") + fileNameOf(Source));
    RecordingBackground background(folder.path(folderName));

    build(&background, plainPicture(Qt::red));

    QVERIFY(!background.isWritten);
    const QString path = folder.path(folderName) + QLatin1Char('/') + fileNameOf(Source);
    QCOMPARE(background.appImagePath(), path);
    QCOMPARE(
        log.takeWarnings(),
        QStringList(QStringLiteral("Cannot write the application wallpaper: \"%1\" \"%2\"")
                        .arg(path, error)));
}

void VelmoorZerlinBackgroundTest::aNullImageIsHandedOverAndWarns()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    build(&background, plainPicture(Qt::white));

    build(&background, {});

    QCOMPARE(background.calls, 2);
    QVERIFY(background.wallpaper.isNull());
    QVERIFY(!background.isWritten);
    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            QStringLiteral("Cannot write the application wallpaper: \"%1\" \"Image is empty\"")
                .arg(background.appImagePath())));
    QCOMPARE(QImage(background.appImagePath()).pixelColor(5, 5), QColor(Qt::white));
}

void VelmoorZerlinBackgroundTest::noThreadIsStarted()
{
    MessageLog log;
    const TestFolder folder;
    RecordingBackground background(folder.path());
    QImage picture(1500, 1500, QImage::Format_ARGB32);
    picture.fill(qRgba(10, 20, 30, 100));
    const int before = threadCount();

    background.darken(&picture);
    picture.reinterpretAsFormat(QImage::Format_ARGB32);
    build(&background, picture);

    QCOMPARE(threadCount(), before);
}

QTEST_GUILESS_MAIN(VelmoorZerlinBackgroundTest)
#include "tst_velmoorzerlinbackground.moc"
