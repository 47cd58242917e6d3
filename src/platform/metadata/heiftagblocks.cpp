// SPDX-License-Identifier: BSD-3-Clause
#include "heiftagblocks.h"

#include "bytereader.h"
#include "mediabox.h"
#include "windowedfile.h"

#include <QByteArray>

#include <limits>
#include <optional>

namespace {

// The limit for the box that describes the items. It has about 10 KB for a picture of a hundred
// tiles.
constexpr qint64 MaximumDescription = 0x40000;

QByteArray readDescription(WindowedFile& file, const FileRange& range)
{
    return file.read(range.offset, int(qMin(range.length, MaximumDescription)));
}

/// The numbers of the items with tags.
struct TagItems
{
    std::optional<quint32> exif;
    std::optional<quint32> xmp;
};

void takeItem(const QByteArray& description, TagItems* items)
{
    ByteReader reader(description);
    const quint8 version = reader.u8();
    reader.take(3); // flags
    const quint32 id = version >= 3 ? reader.u32() : reader.u16();
    reader.u16(); // protection
    const QByteArray type = reader.take(4);
    if (version < 2 || !reader.isGood()) {
        return;
    }
    if (type == "Exif" && !items->exif) {
        items->exif = id;
    } else if (type == "mime" && !items->xmp) {
        reader.takeText(); // the name
        if (reader.takeText() == "application/rdf+xml") {
            items->xmp = id;
        }
    }
}

TagItems findItems(WindowedFile& file, const FileRange& itemInformation)
{
    constexpr int versionAndFlags = 4;
    TagItems items;
    ByteReader head(file.read(itemInformation.offset, 1));
    const int countSize = head.u8() == 0 ? 2 : 4;
    const qint64 limit = itemInformation.offset + itemInformation.length;
    qint64 offset = itemInformation.offset + versionAndFlags + countSize;
    while (const std::optional<MediaBox> box = mediaBoxAt(file, offset, limit)) {
        if (box->type == "infe") {
            constexpr int maximumItem = 512;
            const int size = int(qMin<qint64>(box->content.length, maximumItem));
            takeItem(file.read(box->content.offset, size), &items);
        }
        offset = box->end;
    }
    return items;
}

/// The position of an item that is in one piece, in the file or in the box "idat".
struct ItemPlace
{
    enum class Origin { File, DataBox } origin = Origin::File;
    FileRange range;
};

/// Reads the box "iloc", which lists the pieces of each item.
class ItemLocations
{
public:
    explicit ItemLocations(const QByteArray& content)
        : m_reader(content)
    {
        m_version = m_reader.u8();
        m_reader.take(3); // flags
        const quint8 sizes = m_reader.u8();
        const quint8 moreSizes = m_reader.u8();
        m_offsetSize = sizes >> 4;
        m_lengthSize = sizes & 0xf;
        m_baseSize = moreSizes >> 4;
        m_indexSize = m_version > 0 ? moreSizes & 0xf : 0;
        m_count = number();
    }

    /// The position of the item, if it is in one piece in this file.
    std::optional<ItemPlace> find(quint32 id)
    {
        for (quint32 i = 0; i < m_count && m_reader.isGood(); ++i) {
            const bool isWanted = number() == id;
            const std::optional<ItemPlace> place = next();
            if (isWanted) {
                return m_reader.isGood() ? place : std::nullopt;
            }
        }
        return {};
    }

private:
    quint32 number() { return m_version < 2 ? m_reader.u16() : m_reader.u32(); }

    std::optional<ItemPlace> next()
    {
        const int method = m_version > 0 ? m_reader.u16() & 0xf : 0;
        const bool isHere = m_reader.u16() == 0;
        const quint64 base = m_reader.unsignedOfWidth(m_baseSize);
        const quint16 pieces = m_reader.u16();
        quint64 offset = 0;
        quint64 length = 0;
        for (quint16 i = 0; i < pieces && m_reader.isGood(); ++i) {
            m_reader.unsignedOfWidth(m_indexSize);
            offset = base + m_reader.unsignedOfWidth(m_offsetSize);
            length = m_reader.unsignedOfWidth(m_lengthSize);
        }
        constexpr auto largest = quint64(std::numeric_limits<qint64>::max());
        if (!isHere || method > 1 || pieces != 1 || offset > largest || length > largest) {
            return {};
        }
        return ItemPlace{
            method == 0 ? ItemPlace::Origin::File : ItemPlace::Origin::DataBox,
            {qint64(offset), qint64(length)}};
    }

    ByteReader m_reader;
    quint8 m_version = 0;
    int m_offsetSize = 0;
    int m_lengthSize = 0;
    int m_baseSize = 0;
    int m_indexSize = 0;
    quint32 m_count = 0;
};

/// The range of the item, limited to the range that contains it.
FileRange itemRange(
    WindowedFile& file, const FileRange& description, const QByteArray& locations,
    std::optional<quint32> id)
{
    const auto place = id ? ItemLocations(locations).find(*id) : std::nullopt;
    if (!place) {
        return {};
    }
    const bool inFile = place->origin == ItemPlace::Origin::File;
    const FileRange origin =
        inFile ? FileRange{0, file.size()} : findMediaBox(file, description, "idat");
    const qint64 available = origin.length - place->range.offset;
    if (available <= 0) {
        return {};
    }
    return {origin.offset + place->range.offset, qMin(place->range.length, available)};
}

/// Skips the head of an Exif item, which gives the distance to the directories.
FileRange withoutItemHead(WindowedFile& file, const FileRange& item)
{
    constexpr int headSize = 4;
    ByteReader head(file.read(item.offset, headSize));
    const qint64 skipped = headSize + qint64(head.u32());
    return head.isGood() ? FileRange{item.offset + skipped, item.length - skipped} : FileRange{};
}

} // namespace

TagBlocks findInHeif(WindowedFile& file)
{
    constexpr int versionAndFlags = 4;
    FileRange description = findMediaBox(file, {0, file.size()}, "meta");
    description.offset += versionAndFlags;
    description.length -= versionAndFlags;
    const TagItems items = findItems(file, findMediaBox(file, description, "iinf"));
    const QByteArray locations = readDescription(file, findMediaBox(file, description, "iloc"));
    const FileRange exifItem = itemRange(file, description, locations, items.exif);
    return {withoutItemHead(file, exifItem), itemRange(file, description, locations, items.xmp)};
}
