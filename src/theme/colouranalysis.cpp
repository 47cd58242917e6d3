// SPDX-License-Identifier: BSD-3-Clause
#include "theme/colouranalysis.h"

#include "colorlookup.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr int Hues = 360;
constexpr int SaturationFloor = 20;
constexpr int ValueFloor = 20;
constexpr int WeightShift = 4;
constexpr int HighlightSaturation = 128;
constexpr int HighlightValue = 255;
/// The dominant colour of a picture that is grey or almost black.
const QColor FallbackColor(245, 193, 112);

/// The hue of a pixel in degrees. `range`, which must be above 0, is the difference between its
/// largest and smallest channel. QColor rounds a hue to hundredths of a degree and returns the
/// whole degrees.
int hueOf(int red, int green, int blue, int largest, int range)
{
    // The angle in units of 60 degrees, times `range`.
    int sixths = 0;
    if (largest == red) {
        sixths = green - blue + (green < blue ? 6 * range : 0);
    } else if (largest == green) {
        sixths = blue - red + 2 * range;
    } else {
        sixths = red - green + 4 * range;
    }
    return int((12000U * unsigned(sixths) + unsigned(range)) / (200U * unsigned(range)));
}

/// Whether the saturation is above the lower limit. QColor rounds 65535 range / value, and returns
/// a 257th of it, rounded.
bool isSaturated(int range, int value)
{
    constexpr int least = 257 * (SaturationFloor + 1) - 128;
    return 2 * 65535 * range >= (2 * least - 1) * value;
}

/// The weights of the pixels' hues, and the sum of the pixels' values.
struct HueHistogram
{
    std::array<quint64, Hues> weights = {};
    quint64 valueSum = 0;

    void add(const QRgb* pixels, int count)
    {
        for (const QRgb* pixel = pixels; pixel != pixels + count; ++pixel) {
            add(qRed(*pixel), qGreen(*pixel), qBlue(*pixel));
        }
    }

private:
    void add(int red, int green, int blue)
    {
        const int value = std::max({red, green, blue});
        const int range = value - std::min({red, green, blue});
        valueSum += quint64(value);
        if (value > ValueFloor && isSaturated(range, value)) {
            weights[size_t(hueOf(red, green, blue, value, range))] += quint64(value >> WeightShift);
        }
    }
};

HueHistogram histogramOf(const QImage& image)
{
    HueHistogram histogram;
    const bool isReady =
        image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32;
    std::vector<QRgb> converted(isReady ? 0 : size_t(image.width()));
    for (int y = 0; y < image.height(); ++y) {
        if (isReady) {
            const uchar* const row = image.constScanLine(y);
            histogram.add(reinterpret_cast<const QRgb*>(row), image.width());
        } else {
            for (int x = 0; x < image.width(); ++x) {
                converted[size_t(x)] = image.pixel(x, y);
            }
            histogram.add(converted.data(), image.width());
        }
    }
    return histogram;
}

} // namespace

void analyseImageColors(const QImage& image, float* averageValue, QColor* dominantColor)
{
    const HueHistogram histogram = histogramOf(image);
    const quint64 pixels = quint64(image.width()) * quint64(image.height());
    if (pixels > 0) {
        const quint64 average = histogram.valueSum / pixels;
        *averageValue = float(average);
    }
    const auto first = histogram.weights.begin();
    const auto best = std::max_element(first, histogram.weights.end());
    *dominantColor = *best > 0
        ? QColor::fromHsv(int(best - first), HighlightSaturation, HighlightValue)
        : FallbackColor;
}

QColor highlightFromDominant(const QColor& dominant)
{
    // This is paler than the dominant colour, and so it is lighter.
    const QVector<QColor> palette = {
        QColor::fromHsv(210, 127, 255), QColor::fromHsv(240, 102, 255),
        QColor::fromHsv(270, 127, 255)};
    return ColorLookup(palette).remap(dominant);
}
