// SPDX-License-Identifier: BSD-3-Clause
#include "colorharmony.h"

#include <algorithm>
#include <array>

namespace {

constexpr int Circle = 360;
constexpr int Bins = 24;
constexpr int BinWidth = Circle / Bins;
constexpr int Nearest = 20; // hues with a smaller distance look alike
constexpr int FromPicture = 3;
constexpr int Most = 8;
constexpr int UsualHue = 215;

int distance(int a, int b)
{
    const int direct = std::abs(a - b) % Circle;
    return std::min(direct, Circle - direct);
}

/// How much of a picture has the hues of each bin. Saturated colours have more weight.
std::array<int, Bins> weights(const QImage& picture)
{
    constexpr int leastSaturation = 50;
    constexpr int leastValue = 50;
    std::array<int, Bins> result{};
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            const QColor color(line[x]);
            if (color.hsvSaturation() >= leastSaturation && color.value() >= leastValue) {
                result[std::size_t(color.hsvHue() / BinWidth)] += color.hsvSaturation();
            }
        }
    }
    return result;
}

QVector<int> mainHues(const QImage& picture)
{
    std::array<int, Bins> left = weights(picture);
    QVector<int> hues;
    while (hues.size() < FromPicture) {
        const auto heaviest = std::max_element(left.begin(), left.end());
        if (*heaviest == 0) {
            break;
        }
        const int hue = int(heaviest - left.begin()) * BinWidth + BinWidth / 2;
        *heaviest = 0;
        const bool isNew = std::none_of(
            hues.begin(), hues.end(), [hue](int other) { return distance(hue, other) < Nearest; });
        if (isNew) {
            hues.append(hue);
        }
    }
    return hues;
}

} // namespace

std::vector<QColor> harmoniousColors(const QImage& picture)
{
    QVector<int> hues = mainHues(picture);
    const int first = hues.value(0, UsualHue);
    for (const int turn : {0, 30, -30, 180, 120, -120, 150, -150}) {
        const int hue = (first + turn + Circle) % Circle;
        const bool isNew = std::none_of(
            hues.begin(), hues.end(), [hue](int other) { return distance(hue, other) < Nearest; });
        if (isNew && hues.size() < Most) {
            hues.append(hue);
        }
    }
    std::vector<QColor> colors;
    for (const int hue : qAsConst(hues)) {
        // This is light enough to be read on wallpapers, which are darkened.
        constexpr int saturation = 190;
        constexpr int lightness = 175;
        colors.push_back(QColor::fromHsl(hue, saturation, lightness));
    }
    return colors;
}
