// SPDX-License-Identifier: BSD-3-Clause
#include "theme/backgroundpicture.h"

#include "byteorder.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "testfolder.h"

#include <QPainter>
#include <QTest>

#include <limits>

namespace {

constexpr int Least = std::numeric_limits<int>::min();
constexpr int Most = std::numeric_limits<int>::max();

constexpr int Upright = 1;
constexpr int OnItsSide = 6;

/// Writes a picture without loss, with an orientation tag. Returns its path.
QString writeOriented(TestFolder* folder, const QImage& picture, int orientation)
{
    const QString name = QStringLiteral("picture");
    folder->write(name, pngWithExif(picture, exifBlock({}, orientation)));
    return folder->path(name);
}

/// A TIFF picture of one pixel that claims to be as large as an int allows.
QByteArray largestTiff()
{
    QByteArray bytes = tiffWithExif(ExifBuilder());
    // These are the width, the height, and the rows of a strip; there is one strip.
    for (const quint16 tag : {quint16(0x0100), quint16(0x0101), quint16(0x0116)}) {
        const auto entry = [tag](quint16 type, int side) {
            return littleEndian(tag) + littleEndian(type) + littleEndian(1) + littleEndian(side);
        };
        bytes.replace(entry(ExifBuilder::Short, 1), entry(ExifBuilder::Long, Most));
    }
    return bytes;
}

/// The result of a reader for a part of a picture.
QImage cutAndScaled(const QImage& picture, const QRect& part, const QSize& size)
{
    return picture.copy(part).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage asRgb(const QImage& image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

/// The positions of the first and the last pixel in the original picture, for a picture that was
/// cut and not scaled.
QRect toldPart(const QImage& image)
{
    return {
        coordinates(image.pixel(0, 0)),
        coordinates(image.pixel(image.width() - 1, image.height() - 1))};
}

} // namespace

/// Tests which part of a picture becomes a wallpaper, and how it is turned.
class BackgroundPictureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void squareIsTheLargestOfTheMiddle_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QRect>("part");
        QTest::newRow("wide") << QSize(1000, 600) << Upright << QRect(200, 0, 600, 600);
        QTest::newRow("tall") << QSize(600, 1000) << Upright << QRect(0, 200, 600, 600);
        QTest::newRow("square") << QSize(600, 600) << Upright << QRect(0, 0, 600, 600);
        QTest::newRow("rest that is odd") << QSize(1001, 600) << Upright << QRect(200, 0, 600, 600);
        QTest::newRow("rest of one column") << QSize(601, 600) << Upright << QRect(0, 0, 600, 600);
        QTest::newRow("panorama") << QSize(4000, 200) << Upright << QRect(1900, 0, 200, 200);
        QTest::newRow("standing panorama")
            << QSize(200, 4000) << Upright << QRect(0, 1900, 200, 200);
        QTest::newRow("a pixel") << QSize(1, 1) << Upright << QRect(0, 0, 1, 1);
        QTest::newRow("wide, mirrored") << QSize(1000, 600) << 2 << QRect(200, 0, 600, 600);
        QTest::newRow("wide, upside down") << QSize(1000, 600) << 3 << QRect(200, 0, 600, 600);
        for (int orientation = 5; orientation <= 8; ++orientation) {
            QTest::addRow("stored wide, on its side by %d", orientation)
                << QSize(1000, 600) << orientation << QRect(200, 0, 600, 600);
            QTest::addRow("stored tall, on its side by %d", orientation)
                << QSize(600, 1000) << orientation << QRect(0, 200, 600, 600);
        }
    }

    void squareIsTheLargestOfTheMiddle()
    {
        QFETCH(QSize, size);
        QFETCH(int, orientation);
        QFETCH(QRect, part);
        const MessageLog log;
        TestFolder folder;
        const QString path = writeOriented(&folder, coordinatePicture(size), orientation);

        // The picture is not scaled, because the longer side of the screen is that of the square.
        const QImage image = loadBackgroundImage(path, QSize(1, part.height()));

        QCOMPARE(image.size(), part.size());
        const QRect told = toldPart(image);
        QCOMPARE(
            QRect(
                QPoint(std::min(told.left(), told.right()), std::min(told.top(), told.bottom())),
                QPoint(std::max(told.left(), told.right()), std::max(told.top(), told.bottom()))),
            part);
    }

    void squareIsScaledToTheLongerSideOfTheScreen_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<int>("side");
        QTest::newRow("tall screen") << QSize(540, 960) << 960;
        QTest::newRow("wide screen") << QSize(960, 540) << 960;
        QTest::newRow("square screen") << QSize(300, 300) << 300;
    }

    void squareIsScaledToTheLongerSideOfTheScreen()
    {
        QFETCH(QSize, screen);
        QFETCH(int, side);
        const MessageLog log;
        TestFolder folder;
        const QImage picture = noisePicture(QSize(1000, 600));
        const QString path = writeOriented(&folder, picture, Upright);

        const QImage image = loadBackgroundImage(path, screen);

        QCOMPARE(
            asRgb(image), asRgb(cutAndScaled(picture, QRect(200, 0, 600, 600), QSize(side, side))));
    }

    void squareIsScaledBeforeItIsTurned()
    {
        const MessageLog log;
        TestFolder folder;
        const QImage picture = noisePicture(QSize(1000, 600));
        const QString path = writeOriented(&folder, picture, OnItsSide);

        const QImage image = loadBackgroundImage(path, QSize(54, 96));

        const QImage stored = cutAndScaled(picture, QRect(200, 0, 600, 600), QSize(96, 96));
        QCOMPARE(asRgb(image), asRgb(stored.transformed(QTransform().rotate(90))));
    }

    void orientationTurnsThePicture_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QString>("colours");
        // The letters go clockwise from the top left. The picture is first mirrored, and then
        // turned clockwise.
        QTest::newRow("1: as it is") << 1 << QStringLiteral("RGWB");
        QTest::newRow("2: mirrored") << 2 << QStringLiteral("GRBW");
        QTest::newRow("3: by 180 degrees") << 3 << QStringLiteral("WBRG");
        QTest::newRow("4: mirrored, by 180 degrees") << 4 << QStringLiteral("BWGR");
        QTest::newRow("5: mirrored, by 90 degrees") << 5 << QStringLiteral("WGRB");
        QTest::newRow("6: by 90 degrees") << 6 << QStringLiteral("BRGW");
        QTest::newRow("7: mirrored, by 270 degrees") << 7 << QStringLiteral("RBWG");
        QTest::newRow("8: by 270 degrees") << 8 << QStringLiteral("GWBR");
        QTest::newRow("0: no orientation") << 0 << QStringLiteral("RGWB");
        QTest::newRow("9: no orientation") << 9 << QStringLiteral("RGWB");
        QTest::newRow("without the tag") << -1 << QStringLiteral("RGWB");
    }

    void orientationTurnsThePicture()
    {
        QFETCH(int, orientation);
        QFETCH(QString, colours);
        const MessageLog log;
        TestFolder folder;
        const QString path = writeOriented(&folder, quadrantPicture(QSize(160, 160)), orientation);

        QCOMPARE(quadrants(loadBackgroundImage(path, QSize(54, 96))), colours);
    }

    void jpegIsTurnedLikeAnyPicture_data() { orientationTurnsThePicture_data(); }

    void jpegIsTurnedLikeAnyPicture()
    {
        QFETCH(int, orientation);
        QFETCH(QString, colours);
        const MessageLog log;
        TestFolder folder;
        folder.write(
            QStringLiteral("a.jpg"),
            jpegWithExif(quadrantPicture(QSize(400, 240)), exifBlock({}, orientation)));

        const QImage image =
            loadBackgroundImage(folder.path(QStringLiteral("a.jpg")), QSize(54, 96));

        QCOMPARE(image.size(), QSize(96, 96));
        QCOMPARE(quadrants(image), colours);
    }

    void legacyCutIsTurnedLikeTheSquare_data() { orientationTurnsThePicture_data(); }

    void legacyCutIsTurnedLikeTheSquare()
    {
        QFETCH(int, orientation);
        QFETCH(QString, colours);
        const MessageLog log;
        TestFolder folder;
        const bool isOnItsSide = orientation >= 5 && orientation <= 8;
        const QRect part = isOnItsSide ? QRect(11, 0, 192, 108) : QRect(0, 11, 108, 192);
        QImage picture(isOnItsSide ? QSize(320, 108) : QSize(108, 320), QImage::Format_RGB32);
        picture.fill(Qt::black);
        QPainter(&picture).drawImage(part, quadrantPicture(part.size()));
        const QString path = writeOriented(&folder, picture, orientation);

        const QImage image = loadLegacyBackgroundImage(path, QSize(108, 192));

        QCOMPARE(image.size(), QSize(108, 192));
        QCOMPARE(quadrants(image), colours);
        // It contains no row or column from outside: all corners have the bright colours of the
        // picture.
        for (const QPoint& corner :
             {QPoint(0, 0), QPoint(107, 0), QPoint(0, 191), QPoint(107, 191)}) {
            QVERIFY(image.pixel(corner) != 0xff000000);
        }
    }

    void legacyCutHasTheScreensShapeBelowTheTop_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QRect>("part");
        const QSize screen(540, 960);
        QTest::newRow("the older layout") << QSize(540, 1600) << screen << QRect(0, 58, 540, 960);
        QTest::newRow("the older layout, small") << QSize(54, 160) << screen << QRect(0, 5, 54, 96);
        QTest::newRow("wider") << QSize(1000, 1600) << screen << QRect(230, 58, 540, 960);
        QTest::newRow("wider by an odd rest")
            << QSize(1001, 1600) << screen << QRect(230, 58, 540, 960);
        QTest::newRow("taller") << QSize(540, 2000) << screen << QRect(0, 58, 540, 960);
        QTest::newRow("square") << QSize(600, 600) << screen << QRect(199, 21, 202, 359);
        QTest::newRow("panorama") << QSize(2000, 100) << screen << QRect(984, 3, 33, 58);
        QTest::newRow("standing panorama") << QSize(100, 2000) << screen << QRect(0, 10, 100, 177);
        QTest::newRow("screen of another shape")
            << QSize(1000, 1600) << QSize(1080, 2520) << QRect(295, 57, 411, 958);
        QTest::newRow("screen whose height has no third")
            << QSize(1000, 1600) << QSize(480, 854) << QRect(230, 58, 540, 960);
        // In double precision, these have one row more or less.
        QTest::newRow("precision, narrow")
            << QSize(405, 1601) << QSize(1080, 2520) << QRect(0, 57, 405, 944);
        QTest::newRow("precision, narrow and high")
            << QSize(432, 2048) << QSize(1080, 2520) << QRect(0, 60, 432, 1007);
        QTest::newRow("precision, wider")
            << QSize(956, 1600) << QSize(1080, 2520) << QRect(273, 57, 411, 958);
        QTest::newRow("precision, a row more")
            << QSize(390, 1956) << QSize(1080, 2340) << QRect(0, 51, 390, 845);
        QTest::newRow("precision, small")
            << QSize(300, 195) << QSize(1080, 2340) << QRect(123, 7, 54, 117);
        QTest::newRow("precision, large screen")
            << QSize(301, 372) << QSize(1440, 2960) << QRect(96, 13, 108, 222);
    }

    void legacyCutHasTheScreensShapeBelowTheTop()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, screen);
        QFETCH(QRect, part);
        const MessageLog log;
        TestFolder folder;
        const QImage picture = noisePicture(size);
        const QString path = writeOriented(&folder, picture, Upright);

        const QImage image = loadLegacyBackgroundImage(path, screen);

        QCOMPARE(image.size(), screen);
        QVERIFY(asRgb(image) == asRgb(cutAndScaled(picture, part, screen)));
    }

    void legacyCutOfAPictureOnItsSideIsThatOfTheUprightOne_data()
    {
        QTest::addColumn<QSize>("stored");
        QTest::addColumn<QRect>("part");
        QTest::newRow("the older layout") << QSize(1600, 540) << QRect(58, 0, 960, 540);
        QTest::newRow("wider") << QSize(1600, 1000) << QRect(58, 230, 960, 540);
    }

    void legacyCutOfAPictureOnItsSideIsThatOfTheUprightOne()
    {
        QFETCH(QSize, stored);
        QFETCH(QRect, part);
        const MessageLog log;
        TestFolder folder;
        const QImage picture = noisePicture(stored);
        const QString path = writeOriented(&folder, picture, OnItsSide);

        const QImage image = loadLegacyBackgroundImage(path, QSize(270, 480));

        QCOMPARE(image.size(), QSize(270, 480));
        const QImage cut = cutAndScaled(picture, part, QSize(480, 270));
        QVERIFY(asRgb(image) == asRgb(cut.transformed(QTransform().rotate(90))));
    }

    void rowsFromTopToBottomMakeNoDifference_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("part");
        QTest::newRow("wide") << QSize(100, 60) << QRect(20, 0, 60, 60);
        QTest::newRow("tall") << QSize(60, 100) << QRect(0, 20, 60, 60);
    }

    void rowsFromTopToBottomMakeNoDifference()
    {
        QFETCH(QSize, size);
        QFETCH(QRect, part);
        const MessageLog log;
        TestFolder folder;
        const QImage picture = noisePicture(size);
        folder.write(QStringLiteral("a.bmp"), topDownBmp(picture));
        const QString path = folder.path(QStringLiteral("a.bmp"));

        QCOMPARE(
            asRgb(loadBackgroundImage(path, QSize(54, 96))),
            asRgb(cutAndScaled(picture, part, QSize(96, 96))));
    }

    void squareNeedsOneSideOfTheScreen_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::newRow("no width") << QSize(0, 96);
        QTest::newRow("no height") << QSize(96, 0);
        QTest::newRow("negative width") << QSize(-96, 96);
        QTest::newRow("least height") << QSize(96, Least);
    }

    void squareNeedsOneSideOfTheScreen()
    {
        QFETCH(QSize, screen);
        const MessageLog log;
        TestFolder folder;
        const QString path = writeOriented(&folder, quadrantPicture(QSize(40, 40)), Upright);

        QCOMPARE(loadBackgroundImage(path, screen).size(), QSize(96, 96));
        QVERIFY(loadLegacyBackgroundImage(path, screen).isNull());
    }

    void screenThatThereCannotBeGivesNone_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::newRow("nothing") << QSize(0, 0);
        QTest::newRow("negative") << QSize(-540, -960);
        QTest::newRow("least") << QSize(Least, Least);
        QTest::newRow("most") << QSize(Most, Most);
        QTest::newRow("most in width") << QSize(Most, 960);
        QTest::newRow("most in height") << QSize(540, Most);
        QTest::newRow("larger than any") << QSize(1, 8193);
    }

    void screenThatThereCannotBeGivesNone()
    {
        QFETCH(QSize, screen);
        const MessageLog log;
        TestFolder folder;
        const QString path = writeOriented(&folder, quadrantPicture(QSize(40, 40)), Upright);

        QVERIFY(loadBackgroundImage(path, screen).isNull());
        QVERIFY(loadLegacyBackgroundImage(path, screen).isNull());
    }

    void largestScreenHasWallpapers()
    {
        const MessageLog log;
        TestFolder folder;
        const QString path = writeOriented(&folder, quadrantPicture(QSize(40, 40)), Upright);

        QCOMPARE(loadBackgroundImage(path, QSize(1, 8192)).size(), QSize(8192, 8192));
        QCOMPARE(loadLegacyBackgroundImage(path, QSize(8192, 40)).size(), QSize(8192, 40));
    }

    void pictureThatClaimsTheLargestSizeGivesNone_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::newRow("phone") << QSize(540, 960);
        QTest::newRow("a pixel") << QSize(1, 1);
        QTest::newRow("a row") << QSize(8192, 1);
        QTest::newRow("a column") << QSize(1, 8192);
    }

    void pictureThatClaimsTheLargestSizeGivesNone()
    {
        QFETCH(QSize, screen);
        MessageLog log;
        TestFolder folder;
        folder.write(QStringLiteral("a"), largestTiff());
        const QString path = folder.path(QStringLiteral("a"));

        QVERIFY(loadLegacyBackgroundImage(path, screen).isNull());
        QVERIFY(loadBackgroundImage(path, screen).isNull());
        // We do not control what the decoder logs.
        log.takeMessages();
    }

    void wholeImageIsNeitherCutNorTurned()
    {
        const MessageLog log;
        TestFolder folder;
        const QImage picture = coordinatePicture(QSize(100, 60));
        const QString path = writeOriented(&folder, picture, OnItsSide);

        QCOMPARE(asRgb(loadWholeImage(path)), picture);
    }
};

QTEST_GUILESS_MAIN(BackgroundPictureTest)

#include "tst_backgroundpicture.moc"
