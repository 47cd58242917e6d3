// SPDX-License-Identifier: BSD-3-Clause
#include "photo.h"

#include "measuredprocess.h"

#include <QFile>
#include <QImage>

#include <random>

namespace {

/// With these, 12 megapixels take 4 MB, as from a phone's camera.
constexpr int NoiseLevels = 9;
constexpr int Quality = 92;

/// Adds the same to all channels: noise of brightness is what cameras leave.
QRgb brightened(QRgb pixel, int levels)
{
    const auto channel = [levels](int value) { return qBound(0, value + levels, 255); };
    return qRgb(channel(qRed(pixel)), channel(qGreen(pixel)), channel(qBlue(pixel)));
}

void addNoise(QImage* image)
{
    std::minstd_rand numbers(1);
    for (int y = 0; y < image->height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image->scanLine(y));
        for (int x = 0; x < image->width(); ++x) {
            row[x] = brightened(row[x], int(numbers() >> 8) % NoiseLevels - NoiseLevels / 2);
        }
    }
}

} // namespace

void writePhoto(const QString& path, const QSize& size)
{
    const QImage sample(QStringLiteral(SAMPLE_PICTURES "/lighthouse-coast.jpg"));
    QImage photo = sample.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                       .convertToFormat(QImage::Format_RGB32);
    addNoise(&photo);
    if (photo.isNull() || !photo.save(path, "jpeg", Quality)) {
        giveUp("cannot write " + QFile::encodeName(path));
    }
}
