// SPDX-License-Identifier: BSD-3-Clause
#include "blur/composedpasses.h"

#include "blur/matrix.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int MostRounds = 100;
/// The largest blur that the daemon's keys allow, on a screen with the largest ratio.
constexpr int MostRadius = 256;
constexpr double MostSigma = 256;

Matrix unity(int size)
{
    Matrix result(size, size);
    for (int i = 0; i < size; ++i) {
        result.row(i)[i] = 1;
    }
    return result;
}

/// The result of the passes for the pixels of a line, computed by their definition.
Matrix exactWeights(int length, const HalfKernel& kernel, int rounds)
{
    const int radius = int(kernel.size()) - 1;
    Matrix pass(length, length);
    for (int pixel = 0; pixel < length; ++pixel) {
        for (int offset = -radius; offset <= radius; ++offset) {
            const int source = std::clamp(pixel + offset, 0, length - 1);
            pass.row(pixel)[source] += kernel[size_t(std::abs(offset))];
        }
    }
    Matrix result = unity(length);
    for (int round = 0; round < rounds; ++round) {
        result = pass * result;
    }
    return result;
}

/// The result of the filter for the pixels of a line.
Matrix weightsOf(const LineFilter& filter)
{
    const int length = int(filter.pixels.size());
    Matrix result(length, length);
    for (int pixel = 0; pixel < length; ++pixel) {
        const LineFilter::PixelTaps& taps = filter.pixels[size_t(pixel)];
        for (size_t tap = 0; tap < LineFilter::Taps; ++tap) {
            const LineFilter::Window& window = filter.points[size_t(taps.first) + tap];
            for (size_t i = 0; i < window.weights.size(); ++i) {
                result.row(pixel)[size_t(window.first) + i] +=
                    double(taps.weights.at(tap)) * double(window.weights[i]);
            }
        }
    }
    return result;
}

/// The largest possible difference between two results for any line of pixels, in levels.
double largestDifference(const Matrix& a, const Matrix& b)
{
    // This line is white where the first one has more weight, and black where the second one has.
    constexpr double white = 255;
    double largest = 0;
    for (int row = 0; row < a.rows(); ++row) {
        double sum = 0;
        for (int column = 0; column < a.columns(); ++column) {
            sum += std::abs(a.row(row)[column] - b.row(row)[column]);
        }
        largest = std::max(largest, white * sum / 2);
    }
    return largest;
}

} // namespace

class ComposedPassesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noLineIsFarFromItsPasses_data();
    void noLineIsFarFromItsPasses();
    void aLongLineHasTheWeightsOfItsPasses();
    void theWorkDoesNotGrowWithTheRounds_data();
    void theWorkDoesNotGrowWithTheRounds();
    void powersAreRepeatedProducts();
};

void ComposedPassesTest::noLineIsFarFromItsPasses_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("radius");
    QTest::addColumn<double>("sigma");

    const auto add = [](int length, int rounds, int radius, double sigma) {
        QTest::addRow("%d pixels, %d x %d, sigma %g", length, rounds, radius, sigma)
            << length << rounds << radius << sigma;
    };
    for (const int rounds : {1, 2, 3, 7, 15, 100}) {
        add(150, rounds, 4, 1.3);
        add(150, rounds, 32, 16);
        add(120, rounds, 4, 200); // a box
        add(200, rounds, 21, 120);
        add(90, rounds, 1, 0.3);
    }
    for (const int length : {1, 2, 3, 4, 5, 8, 17}) {
        add(length, 15, 4, 1.3);
        add(length, MostRounds, MostRadius, MostSigma);
        add(length, 1, 3, 2);
    }
}

void ComposedPassesTest::noLineIsFarFromItsPasses()
{
    QFETCH(int, length);
    QFETCH(int, rounds);
    QFETCH(int, radius);
    QFETCH(double, sigma);
    const HalfKernel kernel = gaussianKernel(radius, sigma);

    const double difference = largestDifference(
        weightsOf(composePasses(length, kernel, rounds)), exactWeights(length, kernel, rounds));

    constexpr double levels = 2.5;
    QVERIFY2(difference <= levels, qPrintable(QString::number(difference)));
}

void ComposedPassesTest::aLongLineHasTheWeightsOfItsPasses()
{
    const HalfKernel kernel = gaussianKernel(6, 2);
    for (const int length : {400, 401}) {
        for (const int rounds : {1, 5, 12}) {
            const double difference = largestDifference(
                weightsOf(composePasses(length, kernel, rounds)),
                exactWeights(length, kernel, rounds));
            QVERIFY2(difference <= 1, qPrintable(QString::number(difference)));
        }
    }
}

void ComposedPassesTest::theWorkDoesNotGrowWithTheRounds_data()
{
    QTest::addColumn<int>("length");

    for (const int length : {1, 2, 3, 41, 960, 2520}) {
        QTest::addRow("%d pixels", length) << length;
    }
}

void ComposedPassesTest::theWorkDoesNotGrowWithTheRounds()
{
    QFETCH(int, length);
    constexpr double fewest = 8;
    constexpr double mostProducts = 100;
    for (const int radius : {1, 4, 32, MostRadius}) {
        for (const double sigma : {0.3, 1.3, 16.0, MostSigma}) {
            const HalfKernel kernel = gaussianKernel(radius, sigma);
            for (const int rounds : {1, 2, 3, 8, 30, MostRounds}) {
                const double products =
                    double(composePasses(length, kernel, rounds).products()) / length;
                const QString what = QStringLiteral("%1 rounds, radius %2, sigma %3: %4 products")
                                         .arg(rounds)
                                         .arg(radius)
                                         .arg(sigma)
                                         .arg(products);
                QVERIFY2(products >= fewest - 1 && products <= mostProducts, qPrintable(what));
            }
        }
    }
}

void ComposedPassesTest::powersAreRepeatedProducts()
{
    Matrix base(2, 2);
    base.row(0)[0] = 0.5;
    base.row(0)[1] = 0.5;
    base.row(1)[0] = 0.25;
    base.row(1)[1] = 0.75;
    Matrix expected = unity(2);
    for (int exponent = 0; exponent <= 20; ++exponent) {
        const Matrix power = timesPower(unity(2), base, exponent);
        for (int row = 0; row < 2; ++row) {
            QCOMPARE(power.row(row)[0], expected.row(row)[0]);
            QCOMPARE(power.row(row)[1], expected.row(row)[1]);
        }
        expected = expected * base;
    }
}

QTEST_GUILESS_MAIN(ComposedPassesTest)
#include "tst_composedpasses.moc"
