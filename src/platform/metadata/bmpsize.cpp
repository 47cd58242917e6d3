// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <QByteArray>

namespace {

/// The numbers of the encodings of pixels.
enum Compression : quint32 { Plain = 0, RunLength8 = 1, RunLength4 = 2, Masks = 3 };

/// Whether a header can have this size. The decoder does not know those of 52 and 56 bytes.
bool isHeaderSize(quint32 size)
{
    return size == 12 || size == 40 || size == 64 || size == 108 || size == 124;
}

bool isPossiblePixel(quint32 compression, int bits)
{
    switch (compression) {
    case Plain:
        return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case RunLength8:
        return bits == 8;
    case RunLength4:
        return bits == 4;
    case Masks:
        return bits == 16 || bits == 32;
    }
    return false;
}

} // namespace

std::optional<QSize> bmpSize(WindowedFile& file)
{
    constexpr int fileHeaderSize = 14;
    constexpr quint32 oldHeaderSize = 12;
    constexpr int longestHeaderSize = 124;
    constexpr qint64 maximumPixels = qint64(16384) * 16384; // the limit of the decoder
    ByteReader reader(
        file.read(fileHeaderSize, longestHeaderSize), ByteReader::Order::LittleEndian);
    const quint32 headerSize = reader.u32();
    if (!isHeaderSize(headerSize)) {
        return {};
    }
    const bool isOld = headerSize == oldHeaderSize;
    const auto side = [&] { return isOld ? qint16(reader.u16()) : qint32(reader.u32()); };
    const qint64 width = side();
    const auto height = qAbs<qint64>(side()); // It is negative if the rows go from top to bottom.
    const int planes = reader.u16();
    const int bits = reader.u16();
    const quint32 compression = isOld ? quint32(Plain) : reader.u32();
    reader.take(int(headerSize) - reader.position());
    const bool hasSides = width > 0 && height > 0 && width * height <= maximumPixels;
    if (!reader.isGood() || planes != 1 || !isPossiblePixel(compression, bits) || !hasSides) {
        return {};
    }
    return QSize(int(width), int(height));
}
