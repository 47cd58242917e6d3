// SPDX-License-Identifier: BSD-3-Clause
#include "squarefloor.h"

#include "clocktime.h"

#include <velmoorzerlinbackground.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <malloc.h>

namespace {

/// The quality of the daemon's wallpapers.
constexpr int Quality = 93;

template <typename Function>
Cost costOf(Function function)
{
    const auto start = std::chrono::steady_clock::now();
    const Milliseconds processor(processorTimeOf(function));
    const Milliseconds wall = std::chrono::steady_clock::now() - start;
    return {wall, processor};
}

QImage readSquare(const QString& picture, int side)
{
    QImageReader reader(picture);
    const QSize size = reader.size();
    const int edge = std::min(size.width(), size.height());
    reader.setClipRect(QRect((size.width() - edge) / 2, (size.height() - edge) / 2, edge, edge));
    reader.setScaledSize(QSize(side, side));
    return reader.read();
}

void encode(const QImage& square)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, QByteArrayLiteral("jpeg"));
    writer.setQuality(Quality);
    if (!writer.write(square)) {
        giveUp("cannot encode a picture");
    }
}

/// The mean cost of two encodings.
Cost costOfEncoding(const QImage& square)
{
    const Cost twice = costOf([&square] {
        encode(square);
        encode(square);
    });
    return {twice.wall / 2, twice.processor / 2};
}

} // namespace

Cost operator+(const Cost& a, const Cost& b)
{
    return {a.wall + b.wall, a.processor + b.processor};
}

Cost operator-(const Cost& a, const Cost& b)
{
    return {a.wall - b.wall, a.processor - b.processor};
}

SquareFloor measureSquare(const QString& picture, int side)
{
    // The measurement begins without memory from the last picture, as the daemon does.
    malloc_trim(0);
    QImage square;
    const Cost read = costOf([&] { square = readSquare(picture, side); });
    if (square.size() != QSize(side, side)) {
        giveUp("cannot read " + QFile::encodeName(picture));
    }
    const Cost encodeAsItIs = costOfEncoding(square);
    VelmoorZerlinBackground(QDir::tempPath()).darken(&square);
    return {read, encodeAsItIs, costOfEncoding(square)};
}
