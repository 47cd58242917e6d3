// SPDX-License-Identifier: BSD-3-Clause
#include "exifdirectory.h"

#include "bytereader.h"
#include "regularfile.h"

namespace {

using Order = ByteReader::Order;

// The tags' numbers, from the Exif and TIFF standards.
enum Tag : quint16 {
    Orientation = 0x0112,
    DateTime = 0x0132,
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

// The value types' numbers. Texts are Ascii, but some writers call them bytes.
enum Type : quint16 { Byte = 1, Ascii = 2, Short = 3, Long = 4, Undefined = 7, Directory = 13 };

constexpr int kEntrySize = 12;

class DirectoryReader
{
public:
    DirectoryReader(RegularFile& file, const FileRange& block)
        : m_file(file)
        , m_block(block)
    {
    }

    ExifTags read()
    {
        constexpr int kHeaderSize = 8;
        const QByteArray start = bytes(0, kHeaderSize);
        if (!start.startsWith("II") && !start.startsWith("MM")) {
            return {};
        }
        m_order = start.at(0) == 'I' ? Order::LittleEndian : Order::BigEndian;
        ByteReader header(start.mid(2), m_order);
        if (header.u16() == 42) {
            readDirectory(header.u32());
            readDirectory(m_exifDirectory);
        }
        return m_tags;
    }

private:
    struct Entry
    {
        quint16 tag;
        quint16 type;
        quint32 count;
        QByteArray value; // four bytes: the value, or where it stands
    };

    /// The bytes at `offset` of the block, fewer where it ends before.
    QByteArray bytes(quint32 offset, qint64 length)
    {
        const qint64 available = m_block.length - offset;
        return m_file.read(m_block.offset + offset, static_cast<int>(qMin(length, available)));
    }

    void readDirectory(quint32 offset)
    {
        // Cameras write some 50 entries at most, raw pictures 100.
        constexpr int kMaximumEntries = 512;
        constexpr int kCountSize = 2;
        if (offset == 0) {
            return;
        }
        ByteReader head(bytes(offset, kCountSize), m_order);
        const int count = qMin<int>(head.u16(), kMaximumEntries);
        ByteReader entries(bytes(offset + kCountSize, qint64(count) * kEntrySize), m_order);
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
        constexpr quint32 kMaximumText = 64;
        const bool isText = entry.type == Ascii || entry.type == Byte || entry.type == Undefined;
        if (!isText || !text->isEmpty()) {
            return;
        }
        const auto length = static_cast<int>(qMin(entry.count, kMaximumText));
        if (length <= entry.value.size()) {
            *text = entry.value.left(length);
            return;
        }
        const QByteArray value = bytes(ByteReader(entry.value, m_order).u32(), length);
        // Cut off by the end of the file, a text would mean something else.
        *text = value.size() == length ? value : QByteArray();
    }

    void takePacket(const Entry& entry)
    {
        const qint64 offset = ByteReader(entry.value, m_order).u32();
        const bool fits = offset + entry.count <= m_block.length;
        if (fits && entry.count > quint32(entry.value.size()) && m_tags.xmp.isEmpty()) {
            m_tags.xmp = {m_block.offset + offset, entry.count};
        }
    }

    RegularFile& m_file;
    const FileRange m_block;
    Order m_order = Order::BigEndian;
    quint32 m_exifDirectory = 0;
    ExifTags m_tags;
};

} // namespace

ExifTags readExifTags(RegularFile& file, const FileRange& block)
{
    return DirectoryReader(file, block).read();
}
