// SPDX-License-Identifier: BSD-3-Clause
#include "contrast.h"

#include <algorithm>
#include <cmath>

namespace {

qreal linear(qreal channel)
{
    constexpr qreal threshold = 0.04045;
    return channel <= threshold ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

qreal luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

QColor mixed(const QColor& below, const QColor& above, qreal opacity)
{
    const auto mix = [opacity](qreal lower, qreal upper) {
        return lower * (1 - opacity) + upper * opacity;
    };
    return QColor::fromRgbF(
        mix(below.redF(), above.redF()), mix(below.greenF(), above.greenF()),
        mix(below.blueF(), above.blueF()));
}

} // namespace

QColor meanColor(const QImage& image, qreal dimming)
{
    if (image.isNull()) {
        return {};
    }
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    quint64 red = 0;
    quint64 green = 0;
    quint64 blue = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            red += quint64(qRed(line[x]));
            green += quint64(qGreen(line[x]));
            blue += quint64(qBlue(line[x]));
        }
    }
    const auto count = quint64(pixels.width()) * quint64(pixels.height());
    const QColor mean(int(red / count), int(green / count), int(blue / count));
    return mixed(mean, Qt::black, dimming);
}

qreal contrastOn(const QColor& background, const QColor& color)
{
    constexpr qreal flare = 0.05;
    const qreal a = luminance(mixed(background, color, color.alphaF())) + flare;
    const qreal b = luminance(background) + flare;
    return std::max(a, b) / std::min(a, b);
}
