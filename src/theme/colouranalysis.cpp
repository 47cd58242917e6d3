// SPDX-License-Identifier: BSD-3-Clause
#include "theme/colouranalysis.h"

#include "colorlookup.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>

namespace {

constexpr int Hues = 360;
constexpr int SaturationFloor = 20;
constexpr int ValueFloor = 20;
constexpr int WeightShift = 4;
constexpr int HighlightSaturation = 128;
constexpr int HighlightValue = 255;

} // namespace

void analyseImageColors(const QImage& image, float* averageValue, QColor* dominantColor)
{
    std::array<quint64, Hues> weights = {};
    quint64 valueSum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int hue = 0;
            int saturation = 0;
            int value = 0;
            QColor(image.pixel(x, y)).getHsv(&hue, &saturation, &value);
            valueSum += quint64(value);
            if (saturation > SaturationFloor && value > ValueFloor) {
                weights[size_t(hue)] += quint64(value >> WeightShift);
            }
        }
    }
    const quint64 pixels = quint64(image.width()) * quint64(image.height());
    if (pixels > 0) {
        *averageValue = float(valueSum / pixels);
    }
    const auto best = std::max_element(weights.begin(), weights.end());
    *dominantColor = *best > 0
        ? QColor::fromHsv(int(best - weights.begin()), HighlightSaturation, HighlightValue)
        : QColor(245, 193, 112);
}

QColor highlightFromDominant(const QColor& dominant)
{
    const QVector<QColor> palette = {
        QColor::fromHsv(210, 127, 255), QColor::fromHsv(240, 102, 255),
        QColor::fromHsv(270, 127, 255)};
    return ColorLookup(palette).remap(dominant);
}
