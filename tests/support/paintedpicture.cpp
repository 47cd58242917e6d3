// SPDX-License-Identifier: BSD-3-Clause
#include "paintedpicture.h"

#include <array>
#include <cstdlib>
#include <random>
#include <utility>

namespace {

constexpr int CoordinateBits = 12;

QChar colourLetter(QRgb pixel)
{
    constexpr int tolerance = 60; // levels
    constexpr std::array<std::pair<QRgb, char>, 5> colours{
        {{0xffff0000, 'R'},
         {0xff00ff00, 'G'},
         {0xff0000ff, 'B'},
         {0xffffffff, 'W'},
         {0xff000000, 'K'}}};
    for (const auto& [colour, letter] : colours) {
        if (std::abs(qRed(pixel) - qRed(colour)) <= tolerance
            && std::abs(qGreen(pixel) - qGreen(colour)) <= tolerance
            && std::abs(qBlue(pixel) - qBlue(colour)) <= tolerance) {
            return QLatin1Char(letter);
        }
    }
    return QLatin1Char('?');
}

} // namespace

QImage coordinatePicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            row[x] = 0xff000000 | QRgb(x) << CoordinateBits | QRgb(y);
        }
    }
    return image;
}

QPoint coordinates(QRgb pixel)
{
    constexpr QRgb mask = (1U << CoordinateBits) - 1;
    return {int(pixel >> CoordinateBits & mask), int(pixel & mask)};
}

QImage noisePicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    std::minstd_rand numbers(1);
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            row[x] = 0xff000000 | QRgb(numbers());
        }
    }
    return image;
}

QImage quadrantPicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        const bool isUpper = y < image.height() / 2;
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const bool isLeft = x < image.width() / 2;
            if (isUpper) {
                row[x] = isLeft ? 0xffff0000 : 0xff00ff00;
            } else {
                row[x] = isLeft ? 0xff0000ff : 0xffffffff;
            }
        }
    }
    return image;
}

QString quadrants(const QImage& image)
{
    const int left = image.width() / 4;
    const int right = image.width() - 1 - left;
    const int top = image.height() / 4;
    const int bottom = image.height() - 1 - top;
    QString letters;
    for (const QPoint& place :
         {QPoint(left, top), QPoint(right, top), QPoint(right, bottom), QPoint(left, bottom)}) {
        letters += colourLetter(image.pixel(place));
    }
    return letters;
}
