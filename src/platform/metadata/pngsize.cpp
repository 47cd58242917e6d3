// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "filerange.h"
#include "windowedfile.h"

#include <QByteArray>

#include <algorithm>

#include <zlib.h>

namespace {

constexpr int SignatureSize = 8;
constexpr int HeadSize = 8;
constexpr int TypeSize = 4;
constexpr int ChecksumSize = 4;
constexpr int HeaderLength = 13;

struct Chunk
{
    QByteArray type;
    FileRange content;

    qint64 end() const { return content.end() + ChecksumSize; }
    /// Whether a decoder may skip it.
    bool isAncillary() const { return type.at(0) >= 'a'; }
};

bool isLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// The chunk at `offset`, if decoders accept it as it is.
std::optional<Chunk> chunkAt(WindowedFile& file, qint64 offset)
{
    constexpr quint32 maximumLength = 8000000; // Decoders handle longer chunks in different ways.
    ByteReader head(file.read(offset, HeadSize));
    const quint32 length = head.u32();
    const QByteArray type = head.take(TypeSize);
    if (!head.isGood() || length > maximumLength
        || !std::all_of(type.begin(), type.end(), isLetter)) {
        return {};
    }
    return Chunk{type, {offset + HeadSize, length}};
}

/// The content of a chunk whose checksum is correct, if it is complete and has at most `maximum`
/// bytes.
std::optional<QByteArray> checkedContent(WindowedFile& file, const Chunk& chunk, int maximum)
{
    const auto length = int(qMin<qint64>(chunk.content.length, maximum + 1));
    const QByteArray bytes =
        file.read(chunk.content.offset - TypeSize, TypeSize + length + ChecksumSize);
    if (length > maximum || bytes.size() != TypeSize + length + ChecksumSize) {
        return {};
    }
    const uLong checksum = crc32(
        0, reinterpret_cast<const Bytef*>(bytes.constData()), static_cast<uInt>(TypeSize + length));
    if (ByteReader(bytes.mid(TypeSize + length)).u32() != checksum) {
        return {};
    }
    return bytes.mid(TypeSize, length);
}

/// The numbers of the pixel formats.
enum ColorType : quint8 { Gray = 0, Rgb = 2, Palette = 3, GrayAlpha = 4, RgbAlpha = 6 };

bool isPossibleDepth(quint8 colorType, quint8 depth)
{
    const bool isWhole = depth == 8 || depth == 16;
    const bool isPart = depth == 1 || depth == 2 || depth == 4;
    switch (colorType) {
    case Gray:
        return isPart || isWhole;
    case Palette:
        return isPart || depth == 8;
    case Rgb:
    case GrayAlpha:
    case RgbAlpha:
        return isWhole;
    }
    return false;
}

struct Header
{
    QSize size;
    quint8 colorType = 0;
};

std::optional<Header> readHeader(WindowedFile& file)
{
    constexpr quint32 largestSide = 1000000; // the limit of the decoder
    const std::optional<Chunk> chunk = chunkAt(file, SignatureSize);
    if (!chunk || chunk->type != "IHDR" || chunk->content.length != HeaderLength) {
        return {};
    }
    ByteReader content(checkedContent(file, *chunk, HeaderLength).value_or(QByteArray()));
    const quint32 width = content.u32();
    const quint32 height = content.u32();
    const quint8 depth = content.u8();
    const quint8 colorType = content.u8();
    const bool isStandard = content.u8() == 0 && content.u8() == 0 && content.u8() <= 1;
    const bool hasSides = qMin(width, height) > 0 && qMax(width, height) <= largestSide;
    if (!content.isGood() || !isStandard || !hasSides || !isPossibleDepth(colorType, depth)) {
        return {};
    }
    return Header{QSize(int(width), int(height)), colorType};
}

bool isPalette(WindowedFile& file, const Chunk& chunk, const Header& header)
{
    constexpr int colorSize = 3;
    constexpr int maximumColors = 256;
    const bool isAllowed = header.colorType != Gray && header.colorType != GrayAlpha;
    const auto content = checkedContent(file, chunk, maximumColors * colorSize);
    return isAllowed && content && !content->isEmpty() && content->size() % colorSize == 0;
}

/// The pixels are in chunks of one length. Tags may follow them. To find them, a reader needs the
/// head of each chunk, so these heads are requested now.
void fetchHeadsOfPixels(WindowedFile& file, const Chunk& first)
{
    constexpr int chunks = 64; // half a megabyte of pixels in chunks of the usual size
    const qint64 length = first.end() - first.content.offset + HeadSize;
    for (int i = 0; i < chunks && first.end() + i * length < file.size(); ++i) {
        file.fetch(first.end() + i * length, HeadSize);
    }
}

} // namespace

std::optional<QSize> pngSize(WindowedFile& file)
{
    const std::optional<Header> header = readHeader(file);
    qint64 offset = SignatureSize + HeadSize + HeaderLength + ChecksumSize;
    bool hasPalette = false;
    // The decoder gives the size only after it has begun to read the pixels.
    while (const std::optional<Chunk> chunk = header ? chunkAt(file, offset) : std::nullopt) {
        if (chunk->type == "IDAT") {
            fetchHeadsOfPixels(file, *chunk);
            const bool isComplete = header->colorType != Palette || hasPalette;
            return isComplete ? std::make_optional(header->size) : std::nullopt;
        }
        if (chunk->type == "PLTE" && !hasPalette && isPalette(file, *chunk, *header)) {
            hasPalette = true;
        } else if (!chunk->isAncillary()) {
            break;
        }
        offset = chunk->end();
    }
    return {};
}
