// SPDX-License-Identifier: BSD-3-Clause
#include "theme/colouranalysis.h"

#include "colourhue.h"

#include <QColor>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <array>
#include <random>

namespace {

struct Analysis
{
    explicit Analysis(const QImage& image) { analyseImageColors(image, &averageValue, &dominant); }

    float averageValue = -1;
    QColor dominant;
};

/// One row of pixels.
QImage row(const QVector<QRgb>& pixels, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(pixels.size(), 1, format);
    for (int x = 0; x < pixels.size(); ++x) {
        image.setPixel(x, 0, pixels.at(x));
    }
    return image;
}

QRgb hsv(int hue, int saturation, int value)
{
    return QColor::fromHsv(hue, saturation, value).rgb();
}

QColor dominantOf(int hue)
{
    return QColor::fromHsv(hue, 128, 255);
}

/// The analysis, pixel by pixel, by its definition.
QColor referenceDominant(const QImage& image)
{
    std::array<int, 360> weights = {};
    int total = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int hue = 0;
            int saturation = 0;
            int value = 0;
            QColor(image.pixel(x, y)).getHsv(&hue, &saturation, &value);
            if (saturation > 20 && value > 20) {
                weights[size_t(hue)] += value >> 4;
                total += value >> 4;
            }
        }
    }
    const auto best = std::max_element(weights.begin(), weights.end());
    return total == 0 ? Fallback : dominantOf(int(best - weights.begin()));
}

} // namespace

class ColourAnalysisTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coloursHaveTheHueThatQColorGives();
    void theAverageIsCutToAWholeNumber();
    void everyPixelCountsForTheAverage();
    void aGreyPictureHasTheFallback();
    void aVeryDarkPictureHasTheFallback();
    void floorsAreStrict_data();
    void floorsAreStrict();
    void brightPixelsWeighMore();
    void ofEqualHuesTheLowestWins();
    void hueZeroCanWin();
    void transparencyDoesNotMatter();
    void everyFormatIsAnalysed_data();
    void everyFormatIsAnalysed();
    void anImageWithoutPixelsHasNoAverage();
    void highlightsArePalerWhereTheyWouldBeTooDark();
};

void ColourAnalysisTest::coloursHaveTheHueThatQColorGives()
{
    constexpr int step = 5; // which reaches 255
    for (int red = 0; red < 256; red += step) {
        for (int green = 0; green < 256; green += step) {
            for (int blue = 0; blue < 256; blue += step) {
                const QRgb rgb = qRgb(red, green, blue);
                if (!hasHueOfQColor(rgb)) {
                    QFAIL(qPrintable(QColor(rgb).name()));
                }
            }
        }
    }
}

void ColourAnalysisTest::theAverageIsCutToAWholeNumber()
{
    const Analysis analysis(row({qRgb(10, 0, 0), qRgb(0, 11, 0), qRgb(0, 0, 11)}));

    QCOMPARE(analysis.averageValue, 10.0F);
}

void ColourAnalysisTest::everyPixelCountsForTheAverage()
{
    const Analysis analysis(row({qRgb(255, 255, 255), qRgb(1, 1, 1), qRgb(0, 20, 0)}));

    QCOMPARE(analysis.averageValue, 92.0F);
}

void ColourAnalysisTest::aGreyPictureHasTheFallback()
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(qRgb(120, 120, 120));

    QCOMPARE(Analysis(image).dominant, Fallback);
    QCOMPARE(Analysis(image).averageValue, 120.0F);
}

void ColourAnalysisTest::aVeryDarkPictureHasTheFallback()
{
    QCOMPARE(Analysis(row({qRgb(20, 0, 0), qRgb(0, 20, 3), qRgb(0, 0, 1)})).dominant, Fallback);
}

void ColourAnalysisTest::floorsAreStrict_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<bool>("counts");

    QTest::newRow("saturation 20") << qRgb(255, 235, 235) << false;
    QTest::newRow("saturation 21") << qRgb(255, 234, 234) << true;
    QTest::newRow("value 20") << qRgb(20, 0, 0) << false;
    QTest::newRow("value 21") << qRgb(21, 0, 0) << true;
    QTest::newRow("value 21, saturation 24") << qRgb(21, 19, 19) << true;
    QTest::newRow("value 21, saturation 12") << qRgb(21, 20, 20) << false;
}

void ColourAnalysisTest::floorsAreStrict()
{
    QFETCH(QRgb, pixel);
    QFETCH(bool, counts);

    QCOMPARE(Analysis(row({pixel})).dominant, counts ? dominantOf(0) : Fallback);
}

void ColourAnalysisTest::brightPixelsWeighMore()
{
    // A pixel of value 255 weighs 15, one of value 21 weighs 1.
    const QRgb bright = hsv(30, 255, 255);
    QVector<QRgb> pixels(15, qRgb(0, 21, 0));
    pixels.append(bright);
    QCOMPARE(Analysis(row(pixels)).dominant, dominantOf(30));

    pixels.append(qRgb(0, 21, 0));
    QCOMPARE(Analysis(row(pixels)).dominant, dominantOf(120));
}

void ColourAnalysisTest::ofEqualHuesTheLowestWins()
{
    QCOMPARE(Analysis(row({hsv(200, 255, 255), hsv(30, 255, 255)})).dominant, dominantOf(30));
}

void ColourAnalysisTest::hueZeroCanWin()
{
    QCOMPARE(Analysis(row({qRgb(255, 0, 0), qRgb(0, 0, 200)})).dominant, dominantOf(0));
}

void ColourAnalysisTest::transparencyDoesNotMatter()
{
    const QImage image = row({qRgba(0, 200, 0, 0)}, QImage::Format_ARGB32);

    QCOMPARE(Analysis(image).dominant, dominantOf(120));
    QCOMPARE(Analysis(image).averageValue, 200.0F);
}

void ColourAnalysisTest::everyFormatIsAnalysed_data()
{
    QTest::addColumn<QImage::Format>("format");

    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        QTest::addRow("format %d", format) << QImage::Format(format);
    }
}

void ColourAnalysisTest::everyFormatIsAnalysed()
{
    QFETCH(QImage::Format, format);
    std::mt19937 random(1);
    QImage image(41, 23, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, 0xff000000 | (random() & 0x7fffff));
        }
    }
    image = image.convertToFormat(format);

    QCOMPARE(Analysis(image).dominant, referenceDominant(image));
}

void ColourAnalysisTest::anImageWithoutPixelsHasNoAverage()
{
    const Analysis analysis((QImage()));

    QCOMPARE(analysis.averageValue, -1.0F);
    QCOMPARE(analysis.dominant, Fallback);
}

void ColourAnalysisTest::highlightsArePalerWhereTheyWouldBeTooDark()
{
    QCOMPARE(highlightFromDominant(dominantOf(209)), dominantOf(209));
    QCOMPARE(highlightFromDominant(dominantOf(210)), QColor::fromHsv(210, 127, 255));
    QCOMPARE(highlightFromDominant(dominantOf(240)), QColor::fromHsv(240, 102, 255));
    QCOMPARE(highlightFromDominant(dominantOf(270)), QColor::fromHsv(270, 127, 255));
    QCOMPARE(highlightFromDominant(dominantOf(271)), dominantOf(271));
    QCOMPARE(highlightFromDominant(Fallback), Fallback);
}

QTEST_GUILESS_MAIN(ColourAnalysisTest)
#include "tst_colouranalysis.moc"
