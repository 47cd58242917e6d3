// SPDX-License-Identifier: BSD-3-Clause
#include "exifdirectory.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <utility>

namespace {

using Order = ByteReader::Order;

// The numbers of the tags, from the Exif and TIFF standards.
enum Tag : quint16 {
    Orientation = 0x0112,
    DateTime = 0x0132,
    ThumbnailOffset = 0x0201,
    ThumbnailLength = 0x0202,
    XmpPacket = 0x02bc,
    ExifDirectory = 0x8769,
    DateTimeOriginal = 0x9003,
    DateTimeDigitized = 0x9004,
    OffsetTime = 0x9010,
    OffsetTimeOriginal = 0x9011,
    OffsetTimeDigitized = 0x9012,
    SubSecTime = 0x9290,
    SubSecTimeOriginal = 0x9291,
    SubSecTimeDigitized = 0x9292
};

// The numbers of the types of values. Texts have the type Ascii, but some programs write Byte.
enum Type : quint16 { Byte = 1, Ascii = 2, Short = 3, Long = 4, Undefined = 7, Directory = 13 };

constexpr int CountSize = 2;
constexpr int EntrySize = 12;

class DirectoryReader
{
public:
    DirectoryReader(WindowedFile& file, TagBlock block)
        : m_file(file)
        , m_block(std::move(block))
    {
    }

    ExifTags read()
    {
        readDirectory(mainDirectory());
        readDirectory(m_exifDirectory);
        return m_tags;
    }

    QByteArray readThumbnail()
    {
        // In JPEG files, the block is shorter. In other files, it may claim any length.
        constexpr quint32 maximumThumbnail = 256 * 1024;
        const quint32 main = mainDirectory();
        if (main == 0) {
            return {};
        }
        // Only the thumbnail of the directory after the main one counts.
        readDirectory(directoryAfter(main));
        if (m_thumbnailOffset == 0 || m_thumbnailLength > maximumThumbnail) {
            return {};
        }
        // A thumbnail that is cut off by the end of the file would show only a part of the picture.
        const QByteArray thumbnail = bytes(m_thumbnailOffset, m_thumbnailLength);
        return quint32(thumbnail.size()) == m_thumbnailLength ? thumbnail : QByteArray();
    }

private:
    struct Entry
    {
        quint16 tag;
        quint16 type;
        quint32 count;
        QByteArray value; // four bytes: the value, or its position
    };

    /// The bytes at `offset` of the block, or fewer if the block ends earlier.
    QByteArray bytes(quint32 offset, qint64 length) { return m_block.read(m_file, offset, length); }

    /// The offset of the main directory; 0 if the block does not begin with a TIFF header.
    quint32 mainDirectory()
    {
        constexpr int headerSize = 8;
        const QByteArray start = bytes(0, headerSize);
        if (!start.startsWith("II") && !start.startsWith("MM")) {
            return 0;
        }
        m_order = start.at(0) == 'I' ? Order::LittleEndian : Order::BigEndian;
        ByteReader header(start.mid(2), m_order);
        return header.u16() == 42 ? header.u32() : 0;
    }

    /// The offset of the directory that follows another; 0 if there is none.
    quint32 directoryAfter(quint32 offset)
    {
        ByteReader head(bytes(offset, CountSize), m_order);
        const quint32 next = offset + CountSize + quint32(head.u16()) * EntrySize;
        return ByteReader(bytes(next, sizeof(quint32)), m_order).u32();
    }

    void readDirectory(quint32 offset)
    {
        // Cameras write about 50 entries at most, and raw pictures have about 100.
        constexpr int maximumEntries = 512;
        if (offset == 0) {
            return;
        }
        ByteReader head(bytes(offset, CountSize), m_order);
        const int count = qMin<int>(head.u16(), maximumEntries);
        ByteReader entries(bytes(offset + CountSize, qint64(count) * EntrySize), m_order);
        for (int i = 0; i < count; ++i) {
            const Entry entry{entries.u16(), entries.u16(), entries.u32(), entries.take(4)};
            if (!entries.isGood()) {
                return;
            }
            take(entry);
        }
    }

    void take(const Entry& entry)
    {
        switch (entry.tag) {
        case Orientation:
            return takeNumber(entry, &m_tags.orientation);
        case DateTime:
            return takeText(entry, &m_tags.modified.date);
        case OffsetTime:
            return takeText(entry, &m_tags.modified.offset);
        case SubSecTime:
            return takeText(entry, &m_tags.modified.subSeconds);
        case DateTimeOriginal:
            return takeText(entry, &m_tags.original.date);
        case OffsetTimeOriginal:
            return takeText(entry, &m_tags.original.offset);
        case SubSecTimeOriginal:
            return takeText(entry, &m_tags.original.subSeconds);
        case DateTimeDigitized:
            return takeText(entry, &m_tags.digitized.date);
        case OffsetTimeDigitized:
            return takeText(entry, &m_tags.digitized.offset);
        case SubSecTimeDigitized:
            return takeText(entry, &m_tags.digitized.subSeconds);
        case ExifDirectory:
            return takeNumber(entry, &m_exifDirectory);
        case ThumbnailOffset:
            return takeNumber(entry, &m_thumbnailOffset);
        case ThumbnailLength:
            return takeNumber(entry, &m_thumbnailLength);
        case XmpPacket:
            return takePacket(entry);
        }
    }

    void takeNumber(const Entry& entry, quint32* number)
    {
        if (*number != 0 || entry.count == 0) {
            return;
        }
        ByteReader value(entry.value, m_order);
        switch (entry.type) {
        case Byte:
            *number = value.u8();
            break;
        case Short:
            *number = value.u16();
            break;
        case Long:
        case Directory:
            *number = value.u32();
            break;
        }
    }

    void takeText(const Entry& entry, QByteArray* text)
    {
        constexpr quint32 maximumText = 64;
        const bool isText = entry.type == Ascii || entry.type == Byte || entry.type == Undefined;
        if (!isText || !text->isEmpty()) {
            return;
        }
        const auto length = int(qMin(entry.count, maximumText));
        if (length <= entry.value.size()) {
            *text = entry.value.left(length);
            return;
        }
        const QByteArray value = bytes(ByteReader(entry.value, m_order).u32(), length);
        // A text that is cut off by the end of the file would have another meaning.
        *text = value.size() == length ? value : QByteArray();
    }

    void takePacket(const Entry& entry)
    {
        const qint64 offset = ByteReader(entry.value, m_order).u32();
        const bool fits = offset + entry.count <= m_block.length();
        if (fits && entry.count > quint32(entry.value.size()) && m_tags.xmp.isEmpty()) {
            m_tags.xmp = m_block.from(offset).first(entry.count);
        }
    }

    WindowedFile& m_file;
    const TagBlock m_block;
    Order m_order = Order::BigEndian;
    quint32 m_exifDirectory = 0;
    quint32 m_thumbnailOffset = 0;
    quint32 m_thumbnailLength = 0;
    ExifTags m_tags;
};

} // namespace

ExifTags readExifTags(WindowedFile& file, const TagBlock& block)
{
    return DirectoryReader(file, block).read();
}

QByteArray readExifThumbnail(WindowedFile& file, const TagBlock& block)
{
    return DirectoryReader(file, block).readThumbnail();
}
