// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <QByteArray>

#include <array>
#include <limits>

namespace {

using Order = ByteReader::Order;

// The numbers of the tags and of the types of values, from the TIFF standard.
enum Tag : quint16 {
    ImageWidth = 0x0100,
    ImageLength = 0x0101,
    BitsPerSample = 0x0102,
    Compression = 0x0103,
    Photometric = 0x0106,
    StripOffsets = 0x0111,
    Orientation = 0x0112,
    SamplesPerPixel = 0x0115,
    RowsPerStrip = 0x0116,
    StripByteCounts = 0x0117,
    PlanarConfiguration = 0x011c
};
enum Type : quint16 { Byte = 1, Short = 3, Long = 4, LastType = 12 };

/// The number of bytes of a value, for each type from 1 on.
constexpr std::array<int, LastType> TypeSizes{1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

constexpr int EntrySize = 12;
constexpr int ValueSize = 4;

struct Entry
{
    quint16 tag = 0;
    quint16 type = 0;
    quint32 count = 0;
    QByteArray value; // four bytes: the value, or its position
};

/// Reads the first directory, which describes the picture that programs show.
class DirectoryReader
{
public:
    DirectoryReader(WindowedFile& file, Order order)
        : m_file(file)
        , m_order(order)
    {
    }

    std::optional<QSize> size()
    {
        constexpr int placeOfDirectory = 4;
        constexpr int countSize = 2;
        constexpr int maximumEntries = 512;
        const qint64 offset = ByteReader(m_file.read(placeOfDirectory, 4), m_order).u32();
        const int count = ByteReader(m_file.read(offset, countSize), m_order).u16();
        if (count > maximumEntries) {
            return {};
        }
        // Decoders also need the position of the next directory.
        const int length = count * EntrySize + ValueSize;
        ByteReader entries(m_file.read(offset + countSize, length), m_order);
        for (int i = 0; i < count; ++i) {
            const Entry entry{entries.u16(), entries.u16(), entries.u32(), entries.take(ValueSize)};
            if (!entries.isGood() || !take(entry)) {
                return {};
            }
        }
        entries.take(ValueSize);
        return entries.isGood() && isWhole()
            ? std::make_optional(QSize(int(m_width), int(m_height)))
            : std::nullopt;
    }

private:
    /// Whether the entry is in order, and its value is in the file and has the right type.
    bool take(const Entry& entry)
    {
        if (entry.tag <= m_lastTag || entry.type < Byte || entry.type > LastType) {
            return false;
        }
        m_lastTag = entry.tag;
        const qint64 length = qint64(entry.count) * TypeSizes.at(entry.type - Byte);
        const qint64 offset = ByteReader(entry.value, m_order).u32();
        if (entry.count == 0 || (length > ValueSize && offset + length > m_file.size())) {
            return false;
        }
        switch (entry.tag) {
        case ImageWidth:
            return takeNumber(entry, LargestSide, &m_width);
        case ImageLength:
            return takeNumber(entry, LargestSide, &m_height);
        case BitsPerSample:
            m_depths = entry.count;
            return entry.type == Short && hasOneDepth(entry, offset);
        case SamplesPerPixel:
            return takeNumber(entry, MaximumSamples, &m_samples);
        case RowsPerStrip:
            return takeNumber(entry, std::numeric_limits<quint32>::max(), &m_rows);
        case Compression:
        case Photometric:
            return entry.type == Short && entry.count == 1;
        case Orientation:
        case PlanarConfiguration:
            return isNumber(entry) && entry.type == Short && isEnumerated(entry);
        case StripOffsets:
            m_strips = entry.count;
            return entry.type == Short || entry.type == Long;
        case StripByteCounts:
            m_stripSizes = entry.count;
            return entry.type == Short || entry.type == Long;
        }
        return true;
    }

    static bool isNumber(const Entry& entry)
    {
        return entry.count == 1 && (entry.type == Short || entry.type == Long);
    }

    quint32 number(const Entry& entry) const
    {
        ByteReader value(entry.value, m_order);
        return entry.type == Short ? value.u16() : value.u32();
    }

    /// Reads the value of an entry if it is one number from 1 to `largest`.
    bool takeNumber(const Entry& entry, quint32 largest, quint32* value) const
    {
        *value = isNumber(entry) ? number(entry) : 0;
        return *value > 0 && *value <= largest;
    }

    bool isEnumerated(const Entry& entry) const
    {
        constexpr quint32 orientations = 8;
        constexpr quint32 configurations = 2;
        const quint32 largest = entry.tag == Orientation ? orientations : configurations;
        return number(entry) >= 1 && number(entry) <= largest;
    }

    /// Whether all samples of a pixel have the same, usual number of bits.
    bool hasOneDepth(const Entry& entry, qint64 offset)
    {
        if (entry.count > MaximumSamples) {
            return false;
        }
        const int length = int(entry.count) * TypeSizes[Short - Byte];
        ByteReader depths(length <= ValueSize ? entry.value : m_file.read(offset, length), m_order);
        const quint16 depth = depths.u16();
        bool isEqual = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
        for (quint32 i = 1; i < entry.count; ++i) {
            isEqual = isEqual && depths.u16() == depth;
        }
        return depths.isGood() && isEqual;
    }

    /// Whether the entries describe a picture in strips and agree with each other.
    bool isWhole() const
    {
        if (m_width == 0 || m_height == 0 || m_rows == 0) {
            return false;
        }
        const quint64 strips = (quint64(m_height) + m_rows - 1) / m_rows;
        return m_depths == m_samples && m_strips == strips && m_stripSizes == strips;
    }

    // With larger sides, decoders cannot count the pixels of a row or of the picture.
    static constexpr quint32 LargestSide = 1000000;
    static constexpr quint32 MaximumSamples = 4;

    WindowedFile& m_file;
    const Order m_order;
    quint16 m_lastTag = 0;
    quint32 m_width = 0;
    quint32 m_height = 0;
    quint32 m_depths = 0;
    quint32 m_samples = 1;
    quint32 m_rows = 0;
    quint32 m_strips = 0;
    quint32 m_stripSizes = 0;
};

} // namespace

std::optional<QSize> tiffSize(WindowedFile& file)
{
    const QByteArray head = file.read(0, 4);
    const bool isLittleEndian = head == QByteArrayLiteral("II*\0");
    if (!isLittleEndian && head != QByteArrayLiteral("MM\0*")) {
        return {}; // The form for large files has different directories.
    }
    return DirectoryReader(file, isLittleEndian ? Order::LittleEndian : Order::BigEndian).size();
}
