// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "mediabox.h"
#include "windowedfile.h"

#include <QByteArray>
#include <QVector>

namespace {

// The limit for tables, which have some bytes for each tile of a picture.
constexpr qint64 MaximumTable = 0x40000;
constexpr int VersionAndFlags = 4;

QByteArray readTable(WindowedFile& file, const FileRange& range)
{
    return file.read(range.offset, int(qMin(range.length, MaximumTable)));
}

/// The number of the main picture, from the box "pitm".
std::optional<quint32> mainItem(WindowedFile& file, const FileRange& box)
{
    ByteReader reader(readTable(file, box));
    const quint8 version = reader.u8();
    reader.take(VersionAndFlags - 1);
    const quint32 item = version == 0 ? reader.u16() : reader.u32();
    return reader.isGood() ? std::make_optional(item) : std::nullopt;
}

/// The numbers of the properties of an item, from the box "ipma". They begin with 1.
QVector<int> propertiesOf(quint32 item, const QByteArray& associations)
{
    constexpr quint8 longNumbers = 1;
    constexpr quint8 shortNumber = 0x7f; // without the bit for essential properties
    constexpr quint16 longNumber = 0x7fff;
    ByteReader reader(associations);
    const quint8 version = reader.u8();
    reader.u16();
    const bool isLong = (reader.u8() & longNumbers) != 0;
    for (quint32 left = reader.u32(); left > 0 && reader.isGood(); --left) {
        const bool isWanted = (version == 0 ? reader.u16() : reader.u32()) == item;
        QVector<int> properties(reader.u8());
        for (int& property : properties) {
            property = isLong ? reader.u16() & longNumber : reader.u8() & shortNumber;
        }
        if (isWanted) {
            return reader.isGood() ? properties : QVector<int>();
        }
    }
    return {};
}

std::optional<QSize> extents(WindowedFile& file, const FileRange& property)
{
    constexpr int length = 12;
    constexpr quint32 largestSide = 1000000; // the same as for PNG files
    ByteReader reader(file.read(property.offset, length));
    reader.take(VersionAndFlags);
    const quint32 width = reader.u32();
    const quint32 height = reader.u32();
    if (!reader.isGood() || property.length < length || qMin(width, height) == 0
        || qMax(width, height) > largestSide) {
        return {};
    }
    return QSize(int(width), int(height));
}

} // namespace

std::optional<QSize> heifSize(WindowedFile& file)
{
    FileRange description = findMediaBox(file, {0, file.size()}, "meta");
    description.offset += VersionAndFlags;
    description.length -= VersionAndFlags;
    const std::optional<quint32> item = mainItem(file, findMediaBox(file, description, "pitm"));
    if (!item) {
        return {};
    }
    const FileRange properties = findMediaBox(file, description, "iprp");
    const QVector<int> numbers =
        propertiesOf(*item, readTable(file, findMediaBox(file, properties, "ipma")));
    const FileRange container = findMediaBox(file, properties, "ipco");
    qint64 offset = container.offset;
    for (int number = 1; !numbers.isEmpty(); ++number) {
        const std::optional<MediaBox> box = mediaBoxAt(file, offset, container.end());
        if (!box) {
            break;
        }
        if (box->type == "ispe" && numbers.contains(number)) {
            return extents(file, box->content);
        }
        offset = box->end;
    }
    return {};
}
