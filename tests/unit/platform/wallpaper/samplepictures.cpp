// SPDX-License-Identifier: BSD-3-Clause
#include "samplepictures.h"

#include <random>

namespace {

template <typename PixelAt>
QImage picture(const QSize& size, PixelAt pixelAt)
{
    QImage result(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            result.setPixel(x, y, pixelAt(x, y));
        }
    }
    return result;
}

} // namespace

QImage noisePicture(const QSize& size)
{
    std::mt19937 random(1);
    const auto channel = [&random] { return (random() & 1) != 0 ? 255 : 0; };
    return picture(size, [&](int /*x*/, int /*y*/) {
        const int red = channel();
        const int green = channel();
        return qRgb(red, green, channel());
    });
}

QImage edgePicture(const QSize& size, const QPoint& corner)
{
    return picture(size, [corner](int x, int y) {
        const bool isLight = (x < corner.x()) != (y < corner.y());
        return isLight ? qRgb(255, 255, 255) : qRgb(0, 0, 0);
    });
}

QImage gradientPicture(const QSize& size)
{
    return picture(size, [size](int x, int y) {
        const int across = 255 * x / size.width();
        const int down = 255 * y / size.height();
        return qRgb(across, down, (across + down) / 2);
    });
}

QImage symmetricPicture(const QSize& size)
{
    const QImage noise = noisePicture(size);
    return picture(size, [&](int x, int y) {
        const int fromSide = qMin(x, size.width() - 1 - x);
        return noise.pixel(fromSide, qMin(y, size.height() - 1 - y));
    });
}
