// SPDX-License-Identifier: BSD-3-Clause
#include "blur/wallpaperblur.h"

#include "clampedreference.h"
#include "samplepictures.h"

#include <QTest>

namespace {

/// The parameters if no key is set, at a pixel ratio of 1.
constexpr BlurPasses DefaultPasses = {15, 4, 1.3};

QImage blurred(const QImage& picture, const BlurPasses& passes = DefaultPasses)
{
    QImage result = picture.copy();
    blurWallpaper(&result, passes);
    return result;
}

QImage samplePhoto()
{
    const QImage photo(QStringLiteral(SAMPLE_PICTURES "/autumn-forest.jpg"));
    return photo.copy(500, 300, 260, 220).convertToFormat(QImage::Format_RGB32);
}

void compareWithPasses(const QImage& picture, const BlurPasses& passes)
{
    const BlurError error = blurError(picture, blurred(picture, passes), passes);

    QVERIFY2(error.largestInside <= 1, qPrintable(QString::number(error.largestInside)));
    QVERIFY2(error.mean <= 0.4, qPrintable(QString::number(error.mean)));
    QVERIFY2(error.largest <= 1.5, qPrintable(QString::number(error.largest)));
}

} // namespace

class WallpaperBlurTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void picturesAreBlurredAsByTheirPasses_data();
    void picturesAreBlurredAsByTheirPasses();
    void edgesNearABorderAreBlurredAsByTheirPasses_data();
    void edgesNearABorderAreBlurredAsByTheirPasses();
    void anyNumberOfRoundsIsExact_data();
    void anyNumberOfRoundsIsExact();
    void fewWideRoundsAreExact_data();
    void fewWideRoundsAreExact();
    void anySizeIsExact_data();
    void anySizeIsExact();
    void anyWidthOfTheBlurIsExact_data();
    void anyWidthOfTheBlurIsExact();
    void narrowBlursAreExact_data();
    void narrowBlursAreExact();
    void symmetricPicturesStaySymmetric_data();
    void symmetricPicturesStaySymmetric();
    void plainPicturesStayAsTheyAre_data();
    void plainPicturesStayAsTheyAre();
    void plainPicturesStayAsTheyAreUnderAWideBlur();
    void picturesStaySharpWithoutABlur_data();
    void picturesStaySharpWithoutABlur();
    void theResultIsOpaque();
};

void WallpaperBlurTest::picturesAreBlurredAsByTheirPasses_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<double>("ratio");

    constexpr QSize size(230, 201);
    for (const double ratio : {1.0, 4.0 / 3, 2.0, 3.0}) {
        const QByteArray suffix = ", ratio " + QByteArray::number(ratio);
        QTest::newRow("noise" + suffix) << noisePicture(size) << ratio;
        QTest::newRow("edges" + suffix) << edgePicture(size, {115, 100}) << ratio;
        QTest::newRow("gradient" + suffix) << gradientPicture(size) << ratio;
        QTest::newRow("photo" + suffix) << samplePhoto() << ratio;
    }
}

void WallpaperBlurTest::picturesAreBlurredAsByTheirPasses()
{
    QFETCH(QImage, picture);
    QFETCH(double, ratio);

    const BlurPasses& unscaled = DefaultPasses;
    compareWithPasses(
        picture, {unscaled.rounds, qRound(unscaled.radius * ratio), unscaled.sigma * ratio});
}

void WallpaperBlurTest::edgesNearABorderAreBlurredAsByTheirPasses_data()
{
    QTest::addColumn<int>("distance");

    for (const int distance : {1, 2, 3, 5, 8, 13, 21}) {
        QTest::addRow("%d pixels", distance) << distance;
    }
}

void WallpaperBlurTest::edgesNearABorderAreBlurredAsByTheirPasses()
{
    QFETCH(int, distance);

    compareWithPasses(edgePicture({120, 101}, {distance, 101 - distance}), DefaultPasses);
}

void WallpaperBlurTest::anyNumberOfRoundsIsExact_data()
{
    QTest::addColumn<int>("rounds");
    QTest::addColumn<QImage>("picture");

    constexpr QSize size(140, 121);
    for (const int rounds : {1, 2, 4, 7, 8, 15, 30, 60}) {
        QTest::addRow("%d rounds, noise", rounds) << rounds << noisePicture(size);
        QTest::addRow("%d rounds, edges", rounds) << rounds << edgePicture(size, {5, 60});
    }
}

void WallpaperBlurTest::anyNumberOfRoundsIsExact()
{
    QFETCH(int, rounds);
    QFETCH(QImage, picture);

    compareWithPasses(picture, {rounds, DefaultPasses.radius, DefaultPasses.sigma});
}

void WallpaperBlurTest::fewWideRoundsAreExact_data()
{
    QTest::addColumn<int>("rounds");

    for (const int rounds : {1, 2, 4, 7}) {
        QTest::addRow("%d rounds", rounds) << rounds;
    }
}

void WallpaperBlurTest::fewWideRoundsAreExact()
{
    QFETCH(int, rounds);

    for (const QImage& picture : {noisePicture({140, 121}), edgePicture({140, 121}, {5, 60})}) {
        compareWithPasses(picture, {rounds, 6, 5});
    }
}

void WallpaperBlurTest::anySizeIsExact_data()
{
    QTest::addColumn<QSize>("size");

    for (const QSize& size :
         {QSize(1, 1), QSize(2, 1), QSize(1, 5000), QSize(5000, 1), QSize(3, 7), QSize(37, 41),
          QSize(43, 60), QSize(44, 44), QSize(45, 47), QSize(46, 300), QSize(61, 59),
          QSize(96, 97)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void WallpaperBlurTest::anySizeIsExact()
{
    QFETCH(QSize, size);

    compareWithPasses(noisePicture(size), DefaultPasses);
}

void WallpaperBlurTest::anyWidthOfTheBlurIsExact_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("radius");
    QTest::addColumn<double>("sigma");

    const auto add = [](const QSize& size, int rounds, int radius, double sigma) {
        QTest::addRow(
            "%d x %d, %d x %d, sigma %g", size.width(), size.height(), rounds, radius, sigma)
            << size << rounds << radius << sigma;
    };
    for (const int rounds : {1, 2, 8, 30, 100}) {
        add({1, 1}, rounds, 256, 256);
        add({2, 90}, rounds, 256, 256);
        add({61, 43}, rounds, 32, 16);
        add({80, 90}, rounds, 4, 1.3);
        add({300, 3}, rounds, 16, 10);
        add({3, 1200}, rounds, 4, 2.6);
    }
    add({800, 3}, 8, 36, 16.5);
}

void WallpaperBlurTest::anyWidthOfTheBlurIsExact()
{
    QFETCH(QSize, size);
    QFETCH(int, rounds);
    QFETCH(int, radius);
    QFETCH(double, sigma);

    // Their mean error has no meaning: if a picture became plain, it is the rounding error of one
    // level.
    const BlurPasses passes = {rounds, radius, sigma};
    for (const QImage& picture :
         {noisePicture(size), edgePicture(size, {size.width() / 3, size.height() / 2})}) {
        const BlurError error = blurError(picture, blurred(picture, passes), passes);
        QVERIFY2(error.largest <= 1.2, qPrintable(QString::number(error.largest)));
    }
}

void WallpaperBlurTest::narrowBlursAreExact_data()
{
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("radius");
    QTest::addColumn<double>("sigma");

    QTest::newRow("8 rounds") << 8 << 1 << 0.6;
    QTest::newRow("15 rounds") << 15 << 2 << 0.5;
    QTest::newRow("30 rounds") << 30 << 1 << 0.4;
    QTest::newRow("100 rounds") << 100 << 1 << 0.3;
}

void WallpaperBlurTest::narrowBlursAreExact()
{
    QFETCH(int, rounds);
    QFETCH(int, radius);
    QFETCH(double, sigma);

    for (const QImage& picture :
         {noisePicture({80, 90}), edgePicture({80, 90}, {3, 45}), samplePhoto()}) {
        compareWithPasses(picture, {rounds, radius, sigma});
    }
}

void WallpaperBlurTest::symmetricPicturesStaySymmetric_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("rounds");

    for (const int rounds : {4, 15, 30, 60}) {
        for (const QSize& size :
             {QSize(20, 21), QSize(150, 150), QSize(151, 150), QSize(153, 155)}) {
            QTest::addRow("%d x %d, %d rounds", size.width(), size.height(), rounds)
                << size << rounds;
        }
    }
}

void WallpaperBlurTest::symmetricPicturesStaySymmetric()
{
    QFETCH(QSize, size);
    QFETCH(int, rounds);
    const QImage picture = symmetricPicture(size);

    const QImage result = blurred(picture, {rounds, DefaultPasses.radius, DefaultPasses.sigma});

    QVERIFY(result != picture);
    QCOMPARE(result.mirrored(true, false), result);
    QCOMPARE(result.mirrored(false, true), result);
}

void WallpaperBlurTest::plainPicturesStayAsTheyAre_data()
{
    QTest::addColumn<int>("rounds");

    QTest::newRow("few rounds") << 3;
    QTest::newRow("many rounds") << 60;
}

void WallpaperBlurTest::plainPicturesStayAsTheyAreUnderAWideBlur()
{
    QImage picture(700, 690, QImage::Format_RGB32);
    for (const int level : {1, 77, 128, 200, 255}) {
        picture.fill(qRgb(level, 255 - level, level / 2));

        QCOMPARE(blurred(picture, {16, 40, 20}), picture);
    }
}

void WallpaperBlurTest::plainPicturesStayAsTheyAre()
{
    QFETCH(int, rounds);
    QImage picture(90, 95, QImage::Format_RGB32);
    for (int level = 0; level <= 255; ++level) {
        picture.fill(qRgb(level, 255 - level, level / 2));

        QCOMPARE(blurred(picture, {rounds, DefaultPasses.radius, DefaultPasses.sigma}), picture);
    }
}

void WallpaperBlurTest::picturesStaySharpWithoutABlur_data()
{
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("radius");
    QTest::addColumn<double>("sigma");

    QTest::newRow("no rounds") << 0 << 4 << 1.3;
    QTest::newRow("no radius") << 15 << 0 << 1.3;
    QTest::newRow("no sigma") << 15 << 4 << 0.0;
    QTest::newRow("tiny sigma") << 15 << 4 << 1e-6;
}

void WallpaperBlurTest::picturesStaySharpWithoutABlur()
{
    QFETCH(int, rounds);
    QFETCH(int, radius);
    QFETCH(double, sigma);
    const QImage picture = noisePicture({100, 100});

    QCOMPARE(blurred(picture, {rounds, radius, sigma}), picture);
}

void WallpaperBlurTest::theResultIsOpaque()
{
    for (const QSize& size : {QSize(10, 10), QSize(100, 100)}) {
        const QImage result = blurred(noisePicture(size));
        for (int y = 0; y < result.height(); ++y) {
            const auto* const row = reinterpret_cast<const QRgb*>(result.constScanLine(y));
            QVERIFY(
                std::all_of(row, row + result.width(), [](QRgb p) { return qAlpha(p) == 255; }));
        }
    }
}

QTEST_GUILESS_MAIN(WallpaperBlurTest)
#include "tst_wallpaperblur.moc"
