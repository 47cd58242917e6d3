// SPDX-License-Identifier: BSD-3-Clause
#include "photo.h"

#include "measuredprocess.h"

#include <QFile>
#include <QImage>

#include <algorithm>
#include <random>

namespace {

/// With this number, a picture of 12 megapixels takes 4.4 MB, as from a phone's camera.
constexpr int DetailLevels = 20;
constexpr int Quality = 92;

constexpr int Grey = 128;

/// Random pixels that are almost grey, always the same for each size.
QImage noise(const QSize& size)
{
    std::minstd_rand numbers(1);
    const auto number = [&numbers](int levels) {
        return int(numbers() >> 8) % (levels + 1) - levels / 2;
    };
    const auto pixel = [&number] {
        const int level = Grey + number(DetailLevels);
        constexpr int tint = DetailLevels / 4;
        return qRgb(level + number(tint), level + number(tint), level + number(tint));
    };
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        std::generate_n(reinterpret_cast<QRgb*>(image.scanLine(y)), image.width(), pixel);
    }
    return image;
}

/// Adds the difference between another image of the same size and grey.
void add(const QImage& detail, QImage* image)
{
    for (int y = 0; y < image->height(); ++y) {
        const uchar* const source = detail.constScanLine(y);
        uchar* const target = image->scanLine(y);
        std::transform(target, target + image->bytesPerLine(), source, target, [](int a, int b) {
            return uchar(qBound(0, a + b - Grey, 255));
        });
    }
}

/// Adds details of all sizes, the same amount of each size, as in nature.
void addDetail(QImage* image)
{
    constexpr int coarsest = 16;
    for (QSize size = image->size(); size.height() >= coarsest; size /= 2) {
        add(noise(size).scaled(image->size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
            image);
    }
}

} // namespace

void writePhoto(const QString& path, const QSize& size)
{
    const QImage sample(QStringLiteral(SAMPLE_PICTURES "/lighthouse-coast.jpg"));
    QImage photo = sample.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                       .convertToFormat(QImage::Format_RGB32);
    addDetail(&photo);
    if (photo.isNull() || !photo.save(path, "jpeg", Quality)) {
        giveUp("cannot write " + QFile::encodeName(path));
    }
}
