// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "filerange.h"
#include "windowedfile.h"

#include <QByteArray>

namespace {

using Order = ByteReader::Order;

constexpr int RiffHeadSize = 8;
constexpr int ChunkHeadSize = 8;

quint32 u24(ByteReader& reader)
{
    const quint32 low = reader.u16();
    return low | quint32(reader.u8()) << 16;
}

QSize sizeOf(quint32 width, quint32 height)
{
    return {int(width), int(height)};
}

/// The size from the head of a picture in the lossy form, in a chunk of this length.
std::optional<QSize> lossySize(const QByteArray& content, qint64 length)
{
    constexpr int sideBits = 0x3fff; // The other bits say how to scale the picture.
    constexpr quint32 notAKeyFrame = 1;
    constexpr quint32 maximumProfile = 3;
    ByteReader reader(content, Order::LittleEndian);
    const quint32 frame = u24(reader);
    const QByteArray startCode = reader.take(3);
    const quint32 width = reader.u16() & sideBits;
    const quint32 height = reader.u16() & sideBits;
    const QSize size = sizeOf(width, height);
    const quint32 profile = (frame >> 1) & 7;
    const bool isShown = ((frame >> 4) & 1) != 0;
    const quint32 partitionLength = frame >> 5;
    if (!reader.isGood() || startCode != "\x9d\x01\x2a" || (frame & notAKeyFrame) != 0
        || profile > maximumProfile || !isShown || partitionLength >= length || size.isEmpty()) {
        return {};
    }
    return size;
}

/// The size from the head of a picture in the lossless form.
std::optional<QSize> losslessSize(const QByteArray& content)
{
    constexpr quint8 losslessSignature = 0x2f;
    constexpr int sideBits = 14;
    constexpr quint32 sideMask = (1U << sideBits) - 1;
    constexpr int versionShift = 29;
    ByteReader reader(content, Order::LittleEndian);
    const quint8 signature = reader.u8();
    const quint32 bits = reader.u32();
    if (!reader.isGood() || signature != losslessSignature || bits >> versionShift != 0) {
        return {};
    }
    return sizeOf((bits & sideMask) + 1, ((bits >> sideBits) & sideMask) + 1);
}

/// The size from the first chunk of the extended form, which has the size of the canvas.
/// `available` bytes of the file follow the head of the next chunk.
std::optional<QSize> canvasSize(const QByteArray& content, const QByteArray& next, qint64 available)
{
    constexpr quint8 animationFlag = 0x02;
    constexpr quint64 maximumPixels = 0xffffffff;
    constexpr quint32 shortChunk = 8; // After a shorter chunk, the decoder reads further.
    ByteReader reader(content, Order::LittleEndian);
    const quint8 flags = reader.u8();
    u24(reader); // reserved
    const quint32 width = u24(reader) + 1;
    const quint32 height = u24(reader) + 1;
    ByteReader chunk(next, Order::LittleEndian);
    const bool isAnimation = chunk.take(4) == "ANIM";
    const quint32 length = chunk.u32();
    const bool fits = length >= shortChunk && length <= available - ChunkHeadSize;
    const bool isInOrder = (flags & animationFlag) != 0 ? isAnimation : fits;
    if (!reader.isGood() || !chunk.isGood() || quint64(width) * height > maximumPixels
        || !isInOrder) {
        return {};
    }
    return sizeOf(width, height);
}

} // namespace

std::optional<QSize> webpSize(WindowedFile& file)
{
    constexpr int size = 4;
    constexpr int heads = RiffHeadSize + size + ChunkHeadSize;
    constexpr int canvasLength = 10;
    constexpr quint32 maximumLength =
        0xfffffff6; // with the head of a chunk, the largest number of four bytes
    ByteReader reader(file.read(0, heads + canvasLength + ChunkHeadSize), Order::LittleEndian);
    reader.take(size);
    const quint32 riffLength = reader.u32();
    reader.take(size);
    const QByteArray type = reader.take(size);
    const quint32 length = reader.u32();
    const bool fits =
        riffLength <= maximumLength && qint64(length) + size + ChunkHeadSize <= qint64(riffLength);
    const QByteArray content = reader.take(canvasLength);
    if (!reader.isGood() || !fits) {
        return {};
    }
    if (type == "VP8 ") {
        return lossySize(content, length);
    }
    if (type == "VP8L") {
        return losslessSize(content);
    }
    if (type == "VP8X" && length == canvasLength) {
        const qint64 used = size + ChunkHeadSize + canvasLength;
        return canvasSize(content, reader.take(ChunkHeadSize), qint64(riffLength) - used);
    }
    return {};
}
