// SPDX-License-Identifier: BSD-3-Clause
#include "opaquecopy.h"

#include <QColorSpace>
#include <QImage>

#include <algorithm>

namespace {

constexpr QRgb Opaque = 0xff000000;

/// A row of `image`, with its colours multiplied by its alpha: this is how they look over black.
/// The conversion of single rows starts no threads.
QImage premultipliedRow(const QImage& image, int y)
{
    QImage row(image.constScanLine(y), image.width(), 1, image.bytesPerLine(), image.format());
    row.setColorTable(image.colorTable());
    return row.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void copyOpaque(const uchar* pixels, int count, QRgb* target)
{
    const auto* const source = reinterpret_cast<const QRgb*>(pixels);
    std::transform(source, source + count, target, [](QRgb pixel) { return pixel | Opaque; });
}

} // namespace

QImage opaqueCopy(const QImage& image, const QRect& part)
{
    const bool isReady = image.format() == QImage::Format_RGB32
        || image.format() == QImage::Format_ARGB32_Premultiplied;
    const int offset = part.left() * int(sizeof(QRgb));
    QImage copy(part.size(), QImage::Format_RGB32);
    for (int y = 0; y < copy.height(); ++y) {
        auto* const target = reinterpret_cast<QRgb*>(copy.scanLine(y));
        const int sourceY = part.top() + y;
        if (isReady) {
            copyOpaque(image.constScanLine(sourceY) + offset, copy.width(), target);
        } else {
            const QImage row = premultipliedRow(image, sourceY);
            copyOpaque(row.constScanLine(0) + offset, copy.width(), target);
        }
    }
    copy.setColorSpace(image.colorSpace());
    return copy;
}
