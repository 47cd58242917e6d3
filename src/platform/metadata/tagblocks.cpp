// SPDX-License-Identifier: BSD-3-Clause
#include "tagblocks.h"

#include "bytereader.h"
#include "heiftagblocks.h"
#include "regularfile.h"

#include <QByteArray>

namespace {

enum class PictureKind { Unknown, Jpeg, Png, WebP, Tiff, Heif };

constexpr int kSignatureSize = 16;

PictureKind pictureKind(const QByteArray& start)
{
    // The third byte begins the first marker. Without it the file is no picture that anyone reads.
    if (start.startsWith("\xff\xd8\xff")) {
        return PictureKind::Jpeg;
    }
    if (start.startsWith("\x89PNG\r\n\x1a\n")) {
        return PictureKind::Png;
    }
    // Only the extended form, which begins with this chunk, has room for tags.
    if (start.startsWith("RIFF") && start.mid(8, 8) == "WEBPVP8X") {
        return PictureKind::WebP;
    }
    if (start.startsWith(QByteArray("II*\0", 4)) || start.startsWith(QByteArray("MM\0*", 4))) {
        return PictureKind::Tiff;
    }
    return start.mid(4, 4) == "ftyp" ? PictureKind::Heif : PictureKind::Unknown;
}

const QByteArray& exifPrefix()
{
    static const QByteArray prefix("Exif\0\0", 6);
    return prefix;
}

void setIfFirst(FileRange* range, qint64 offset, qint64 length)
{
    if (range->isEmpty()) {
        *range = {offset, length};
    }
}

/// Steps over the prefix of JPEG files, which some writers put into the files of other kinds too.
FileRange withoutExifPrefix(RegularFile& file, const FileRange& block)
{
    const int size = exifPrefix().size();
    return !block.isEmpty() && file.read(block.offset, size) == exifPrefix()
        ? FileRange{block.offset + size, block.length - size}
        : block;
}

/// The offset of the next marker's code at or behind `offset`, or -1.
qint64 findMarker(RegularFile& file, qint64 offset)
{
    // Some writers leave a few bytes between the segments. More of them are no picture any more.
    constexpr int kMaximumPadding = 256;
    const QByteArray bytes = file.read(offset, kMaximumPadding);
    int position = bytes.indexOf('\xff');
    while (position >= 0 && position < bytes.size() && bytes.at(position) == '\xff') {
        ++position;
    }
    return position >= 0 && position < bytes.size() ? offset + position : -1;
}

void takeApplicationSegment(RegularFile& file, qint64 offset, int length, TagBlocks* blocks)
{
    static const QByteArray xmpPrefix("http://ns.adobe.com/xap/1.0/\0", 29);
    const QByteArray start = file.read(offset, qMin(length, xmpPrefix.size()));
    if (start.startsWith(exifPrefix())) {
        setIfFirst(&blocks->exif, offset + exifPrefix().size(), length - exifPrefix().size());
    } else if (start == xmpPrefix) {
        setIfFirst(&blocks->xmp, offset + xmpPrefix.size(), length - xmpPrefix.size());
    }
}

TagBlocks findInJpeg(RegularFile& file)
{
    constexpr quint8 kEndOfImage = 0xd9;
    constexpr quint8 kStartOfScan = 0xda;
    constexpr quint8 kApplication1 = 0xe1;
    constexpr int kLengthSize = 2;
    TagBlocks blocks;
    qint64 offset = findMarker(file, 2);
    while (offset >= 0 && (blocks.exif.isEmpty() || blocks.xmp.isEmpty())) {
        ByteReader segment(file.read(offset, 1 + kLengthSize));
        const quint8 marker = segment.u8();
        const int length = segment.u16() - kLengthSize; // It counts itself.
        if (!segment.isGood() || marker == kStartOfScan || marker == kEndOfImage || length < 0) {
            break;
        }
        const qint64 content = offset + segment.position();
        if (marker == kApplication1) {
            takeApplicationSegment(file, content, length, &blocks);
        }
        offset = findMarker(file, content + length);
    }
    return blocks;
}

/// The XMP packet in the international text chunk at `offset`, if it holds one as it is. Compressed
/// packets are not read: the format's rules for XMP rule compression out.
FileRange packetInText(RegularFile& file, qint64 offset, qint64 length)
{
    constexpr int kMaximumHead = 256;
    ByteReader head(file.read(offset, static_cast<int>(qMin<qint64>(length, kMaximumHead))));
    const bool isXmp = head.takeText() == "XML:com.adobe.xmp";
    const bool isCompressed = head.u8() != 0;
    head.u8(); // the method of compression
    head.takeText(); // the language
    head.takeText(); // the translated keyword
    if (!isXmp || isCompressed || !head.isGood()) {
        return {};
    }
    return {offset + head.position(), length - head.position()};
}

TagBlocks findInPng(RegularFile& file)
{
    constexpr int kHeadSize = 8;
    constexpr int kChecksumSize = 4;
    TagBlocks blocks;
    qint64 offset = 8;
    while (blocks.exif.isEmpty() || blocks.xmp.isEmpty()) {
        ByteReader chunk(file.read(offset, kHeadSize));
        const qint64 length = chunk.u32();
        const QByteArray type = chunk.take(4);
        if (!chunk.isGood() || type == "IEND") {
            break;
        }
        const qint64 content = offset + kHeadSize;
        if (type == "eXIf") {
            setIfFirst(&blocks.exif, content, length);
        } else if (type == "iTXt" && blocks.xmp.isEmpty()) {
            blocks.xmp = packetInText(file, content, length);
        }
        offset = content + length + kChecksumSize;
    }
    return blocks;
}

TagBlocks findInWebP(RegularFile& file)
{
    constexpr int kHeadSize = 8;
    TagBlocks blocks;
    qint64 offset = 12;
    while (blocks.exif.isEmpty() || blocks.xmp.isEmpty()) {
        ByteReader chunk(file.read(offset, kHeadSize), ByteReader::Order::LittleEndian);
        const QByteArray type = chunk.take(4);
        const qint64 length = chunk.u32();
        if (!chunk.isGood()) {
            break;
        }
        const qint64 content = offset + kHeadSize;
        if (type == "EXIF") {
            setIfFirst(&blocks.exif, content, length);
        } else if (type == "XMP ") {
            setIfFirst(&blocks.xmp, content, length);
        }
        offset = content + length + length % 2; // Chunks begin at even offsets.
    }
    return blocks;
}

TagBlocks findInKind(PictureKind kind, RegularFile& file)
{
    switch (kind) {
    case PictureKind::Unknown:
        return {};
    case PictureKind::Jpeg:
        return findInJpeg(file);
    case PictureKind::Png:
        return findInPng(file);
    case PictureKind::WebP:
        return findInWebP(file);
    case PictureKind::Tiff:
        return {{0, file.size()}, {}};
    case PictureKind::Heif:
        return findInHeif(file);
    }
    return {};
}

} // namespace

TagBlocks findTagBlocks(RegularFile& file)
{
    TagBlocks blocks = findInKind(pictureKind(file.read(0, kSignatureSize)), file);
    blocks.exif = withoutExifPrefix(file, blocks.exif);
    return blocks;
}
