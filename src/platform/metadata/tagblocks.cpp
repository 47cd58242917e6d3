// SPDX-License-Identifier: BSD-3-Clause
#include "tagblocks.h"

#include "bytereader.h"
#include "heiftagblocks.h"
#include "jpegsegment.h"
#include "pictureformat.h"
#include "pngtagblocks.h"
#include "windowedfile.h"

#include <QByteArray>

#include <optional>

namespace {

const QByteArray& exifPrefix()
{
    static const QByteArray prefix("Exif\0\0", 6);
    return prefix;
}

/// Skips the prefix that JPEG files have. Some programs also write it into other files.
TagBlock withoutExifPrefix(WindowedFile& file, const TagBlock& block)
{
    const int size = exifPrefix().size();
    return block.read(file, 0, size) == exifPrefix() ? block.from(size) : block;
}

TagBlocks findInJpeg(WindowedFile& file)
{
    constexpr quint8 application1 = 0xe1;
    TagBlocks blocks;
    qint64 offset = FirstJpegSegment;
    while (!blocks.isComplete()) {
        const std::optional<JpegSegment> segment = jpegSegmentAt(file, offset);
        if (!segment || segment->isLast()) {
            break;
        }
        if (segment->marker == application1) {
            takeApplicationSegment(file, segment->content, &blocks);
        }
        offset = segment->content.end();
    }
    return blocks;
}

TagBlocks findInWebP(WindowedFile& file)
{
    constexpr int headSize = 8;
    constexpr int firstChunk = 12;
    TagBlocks blocks;
    // Only the extended form, which begins with this chunk, can have tags.
    if (file.read(firstChunk, 4) != "VP8X") {
        return blocks;
    }
    qint64 offset = firstChunk;
    while (!blocks.isComplete()) {
        ByteReader chunk(file.read(offset, headSize), ByteReader::Order::LittleEndian);
        const QByteArray type = chunk.take(4);
        const qint64 length = chunk.u32();
        if (!chunk.isGood()) {
            break;
        }
        const qint64 content = offset + headSize;
        if (type == "EXIF") {
            blocks.takeExif(FileRange{content, length});
        } else if (type == "XMP ") {
            blocks.takeXmp(FileRange{content, length});
        }
        offset = content + length + length % 2; // Chunks begin at even offsets.
    }
    return blocks;
}

TagBlocks findInFormat(PictureFormat format, WindowedFile& file)
{
    switch (format) {
    case PictureFormat::Jpeg:
        return findInJpeg(file);
    case PictureFormat::Png:
        return findInPng(file);
    case PictureFormat::WebP:
        return findInWebP(file);
    case PictureFormat::Tiff:
        return {FileRange{0, file.size()}, {}};
    case PictureFormat::Heif:
    case PictureFormat::Avif:
        return findInHeif(file);
    case PictureFormat::Gif:
    case PictureFormat::Bmp:
    case PictureFormat::Pnm:
    case PictureFormat::Unknown:
        return {};
    }
    return {};
}

} // namespace

QByteArray TagBlock::read(WindowedFile& file, qint64 offset, qint64 length) const
{
    const auto available = int(qMin(length, m_range.length - offset));
    if (offset < 0 || available <= 0) {
        return {};
    }
    const qint64 position = m_range.offset + offset;
    return m_decoded.isEmpty() ? file.read(position, available)
                               : m_decoded.mid(int(position), available);
}

TagBlock TagBlock::from(qint64 offset) const
{
    TagBlock rest = *this;
    rest.m_range = {m_range.offset + offset, m_range.length - offset};
    return rest;
}

TagBlock TagBlock::first(qint64 length) const
{
    TagBlock part = *this;
    part.m_range.length = qMin(length, m_range.length);
    return part;
}

void takeApplicationSegment(WindowedFile& file, const TagBlock& segment, TagBlocks* blocks)
{
    static const QByteArray xmpPrefix("http://ns.adobe.com/xap/1.0/\0", 29);
    const QByteArray start = segment.read(file, 0, xmpPrefix.size());
    if (start.startsWith(exifPrefix())) {
        blocks->takeExif(segment.from(exifPrefix().size()));
    } else if (start == xmpPrefix) {
        blocks->takeXmp(segment.from(xmpPrefix.size()));
    }
}

TagBlocks findTagBlocks(WindowedFile& file)
{
    TagBlocks blocks = findInFormat(pictureFormat(file.read(0, PictureSignatureSize)), file);
    blocks.exif = withoutExifPrefix(file, blocks.exif);
    return blocks;
}
