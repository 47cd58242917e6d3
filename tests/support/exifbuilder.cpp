// SPDX-License-Identifier: BSD-3-Clause
#include "exifbuilder.h"

#include "byteorder.h"
#include "mediapicture.h"

#include <QBuffer>
#include <QImage>

namespace {

constexpr int TiffHeaderSize = 8;
constexpr int EntrySize = 12;
constexpr quint16 ExifPointer = 0x8769;

QByteArray evenSized(const QByteArray& bytes)
{
    return bytes.size() % 2 == 0 ? bytes : bytes + '\0';
}

QByteArray encodedPicture(const QImage& image, const char* format)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format)) {
        qFatal("cannot write a picture of the format %s", format);
    }
    return buffer.data();
}

QImage greenPicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    return image;
}

QByteArray jpegSegment(const QByteArray& content)
{
    return "\xff\xe1" + bigEndian(quint16(content.size() + 2)) + content;
}

quint32 pngChecksum(const QByteArray& bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xedb88320 : 0);
        }
    }
    return ~sum;
}

QByteArray riffChunk(const QByteArray& type, const QByteArray& content)
{
    return type + littleEndian(quint32(content.size())) + evenSized(content);
}

QByteArray itemEntry(HeifLayout layout, quint16 id, const QByteArray& typeAndName)
{
    const QByteArray end = bigEndian(quint16(0)) + typeAndName;
    return layout == HeifLayout::MediaDataLongNumbers
        ? fullBox("infe", 3, bigEndian(quint32(id)) + end)
        : fullBox("infe", 2, bigEndian(id) + end);
}

QByteArray itemEntries(HeifLayout layout, const QByteArrayList& entries)
{
    const auto count = quint16(entries.size());
    return layout == HeifLayout::MediaDataLongNumbers
        ? fullBox("iinf", 1, bigEndian(quint32(count)) + entries.join())
        : fullBox("iinf", 0, bigEndian(count) + entries.join());
}

QByteArray itemLocation(HeifLayout layout, quint16 id, int offset, int length)
{
    const QByteArray here = bigEndian(quint16(0));
    const QByteArray onePiece = bigEndian(quint16(1));
    switch (layout) {
    case HeifLayout::MediaData:
        return bigEndian(id) + here + onePiece + bigEndian(quint32(offset))
            + bigEndian(quint32(length));
    case HeifLayout::MediaDataLongNumbers:
        return bigEndian(quint32(id)) + bigEndian(quint16(0)) + here + bigEndian(quint64(offset))
            + onePiece + bigEndian(quint64(0)) + bigEndian(quint64(length));
    case HeifLayout::DataBox:
        return bigEndian(id) + bigEndian(quint16(1)) + here + onePiece + bigEndian(quint32(offset))
            + bigEndian(quint32(length));
    }
    return {};
}

QByteArray itemLocationsHead(HeifLayout layout)
{
    switch (layout) {
    case HeifLayout::MediaData:
    case HeifLayout::DataBox:
        return {"\x44\x00\x00\x02", 4}; // 4 bytes for offset and length, two items
    case HeifLayout::MediaDataLongNumbers:
        return {"\x88\x80\x00\x00\x00\x02", 6}; // 8 bytes for all, two items
    }
    return {};
}

quint8 itemLocationsVersion(HeifLayout layout)
{
    switch (layout) {
    case HeifLayout::MediaData:
        return 0;
    case HeifLayout::DataBox:
        return 1;
    case HeifLayout::MediaDataLongNumbers:
        return 2;
    }
    return 0;
}

} // namespace

QByteArray pngChunk(const QByteArray& type, const QByteArray& content)
{
    return bigEndian(quint32(content.size())) + type + content
        + bigEndian(pngChecksum(type + content));
}

ExifBuilder::ExifBuilder(Order order)
    : m_order(order)
{
}

ExifBuilder& ExifBuilder::text(quint16 tag, const QByteArray& text)
{
    return value(tag, Ascii, quint32(text.size() + 1), text + '\0');
}

ExifBuilder& ExifBuilder::number(quint16 tag, quint16 number)
{
    return value(tag, Short, 1, number16(number));
}

ExifBuilder& ExifBuilder::value(quint16 tag, quint16 type, quint32 count, const QByteArray& bytes)
{
    (tag >= 0x9000 ? m_exif : m_main)[tag] = {type, count, bytes};
    return *this;
}

ExifBuilder& ExifBuilder::leadingBytes(const QByteArray& bytes)
{
    m_leadingBytes = evenSized(bytes);
    return *this;
}

QByteArray ExifBuilder::number16(quint16 number) const
{
    return m_order == Order::BigEndian ? bigEndian(number) : littleEndian(number);
}

QByteArray ExifBuilder::number32(quint32 number) const
{
    return m_order == Order::BigEndian ? bigEndian(number) : littleEndian(number);
}

/// The directory as it is stored at `offset` of the block, followed by its values.
QByteArray ExifBuilder::serialized(const Directory& directory, int offset) const
{
    const int size = 2 + EntrySize * int(directory.size()) + 4;
    QByteArray entries = number16(quint16(directory.size()));
    QByteArray values;
    for (const auto& [tag, entry] : directory) {
        const bool fits = entry.bytes.size() <= 4;
        entries += number16(tag) + number16(entry.type) + number32(entry.count)
            + (fits ? entry.bytes.leftJustified(4, '\0')
                    : number32(quint32(offset + size + values.size())));
        values += fits ? QByteArray() : evenSized(entry.bytes);
    }
    return entries + number32(0) + values;
}

QByteArray ExifBuilder::block() const
{
    const int mainOffset = TiffHeaderSize + m_leadingBytes.size();
    const QByteArray header = (m_order == Order::BigEndian ? "MM" : "II") + number16(42)
        + number32(quint32(mainOffset)) + m_leadingBytes;
    if (m_exif.empty()) {
        return header + serialized(m_main, mainOffset);
    }
    Directory main = m_main;
    main[ExifPointer] = {Long, 1, number32(0)};
    const int exifOffset = mainOffset + serialized(main, mainOffset).size();
    main[ExifPointer].bytes = number32(quint32(exifOffset));
    return header + serialized(main, mainOffset) + serialized(m_exif, exifOffset);
}

QByteArray exifBlock(const QByteArray& dateTimeOriginal, int orientation)
{
    ExifBuilder builder;
    if (!dateTimeOriginal.isEmpty()) {
        builder.text(ExifBuilder::DateTimeOriginal, dateTimeOriginal);
    }
    if (orientation >= 0) {
        builder.number(ExifBuilder::Orientation, quint16(orientation));
    }
    return builder.block();
}

QByteArray xmpPacket(const QByteArray& attributes)
{
    return "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
           "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
           "<rdf:Description rdf:about=\"\""
           " xmlns:exif=\"http://ns.adobe.com/exif/1.0/\""
           " xmlns:photoshop=\"http://ns.adobe.com/photoshop/1.0/\""
           " xmlns:tiff=\"http://ns.adobe.com/tiff/1.0/\""
           " xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" "
        + attributes + "/></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
}

QByteArray jpegWithExif(const QByteArray& exif, const QByteArray& xmp, const QSize& size)
{
    return jpegWithExif(greenPicture(size), exif, xmp);
}

QByteArray jpegWithExif(const QImage& picture, const QByteArray& exif, const QByteArray& xmp)
{
    QByteArray segments;
    if (!exif.isEmpty()) {
        segments += jpegSegment(QByteArray("Exif\0\0", 6) + exif);
    }
    if (!xmp.isEmpty()) {
        segments += jpegSegment(QByteArray("http://ns.adobe.com/xap/1.0/\0", 29) + xmp);
    }
    return encodedPicture(picture, "jpg").insert(2, segments);
}

QByteArray pngWithExif(const QByteArray& exif, const QByteArray& xmp, const QSize& size)
{
    return pngWithExif(greenPicture(size), exif, xmp);
}

QByteArray pngWithExif(const QImage& picture, const QByteArray& exif, const QByteArray& xmp)
{
    constexpr int afterHeader = 33;
    QByteArray chunks;
    if (!exif.isEmpty()) {
        chunks += pngChunk("eXIf", exif);
    }
    if (!xmp.isEmpty()) {
        chunks += pngChunk("iTXt", QByteArray("XML:com.adobe.xmp\0\0\0\0\0", 22) + xmp);
    }
    return encodedPicture(picture, "png").insert(afterHeader, chunks);
}

QByteArray pngText(
    const QByteArray& type, const QByteArray& keyword, const QByteArray& text, bool isCompressed)
{
    constexpr int lengthBytes = 4; // that Qt puts in front
    const QByteArray compressed = qCompress(text).mid(lengthBytes);
    QByteArray content = keyword + '\0';
    if (type == "zTXt") {
        content += '\0' + compressed;
    } else if (type == "iTXt") {
        // The method of compression, the language and the translated keyword are empty.
        content +=
            (isCompressed ? '\1' : '\0') + QByteArray(3, '\0') + (isCompressed ? compressed : text);
    } else {
        content += text;
    }
    return pngChunk(type, content);
}

QByteArray rawProfile(const QByteArray& name, const QByteArray& block)
{
    constexpr int digitsInLine = 72;
    const QByteArray digits = block.toHex();
    QByteArray text =
        '\n' + name + '\n' + QByteArray::number(block.size()).rightJustified(8) + '\n';
    for (int i = 0; i < digits.size(); i += digitsInLine) {
        text += digits.mid(i, digitsInLine) + '\n';
    }
    return text;
}

QByteArray pngWithChunks(const QByteArray& chunks, const QSize& size)
{
    constexpr int headerSize = 33;
    return encodedPicture(greenPicture(size), "png").insert(headerSize, chunks);
}

QByteArray webpWithExif(const QByteArray& exif, const QByteArray& xmp, const QSize& size)
{
    constexpr int fileHeadSize = 12;
    const quint32 flags = (exif.isEmpty() ? 0 : 0x08) | (xmp.isEmpty() ? 0 : 0x04);
    const QByteArray canvas = littleEndian(flags) + littleEndian(quint32(size.width() - 1)).left(3)
        + littleEndian(quint32(size.height() - 1)).left(3);
    QByteArray chunks = "WEBP" + riffChunk("VP8X", canvas)
        + encodedPicture(greenPicture(size), "webp").mid(fileHeadSize);
    if (!exif.isEmpty()) {
        chunks += riffChunk("EXIF", exif);
    }
    if (!xmp.isEmpty()) {
        chunks += riffChunk("XMP ", xmp);
    }
    return "RIFF" + littleEndian(quint32(chunks.size())) + chunks;
}

QByteArray tiffWithExif(ExifBuilder exif, const QByteArray& xmp)
{
    // One grey pixel in one strip, which follows the header.
    exif.leadingBytes(QByteArray(2, '\x7f'));
    exif.number(0x0100, 1).number(0x0101, 1).number(0x0102, 8).number(0x0103, 1);
    exif.number(0x0106, 1).number(0x0111, TiffHeaderSize).number(0x0115, 1);
    exif.number(0x0116, 1).number(0x0117, 1);
    if (!xmp.isEmpty()) {
        exif.value(ExifBuilder::XmpPacket, ExifBuilder::Byte, quint32(xmp.size()), xmp);
    }
    return exif.block();
}

QByteArray heifWithExif(const QByteArray& exif, const QByteArray& xmp, HeifLayout layout)
{
    constexpr quint16 exifId = 7;
    constexpr quint16 xmpId = 9;
    const QByteArray exifItem =
        exif.isEmpty() ? exif : bigEndian(quint32(6)) + QByteArray("Exif\0\0", 6) + exif;
    const QByteArray data = exifItem + xmp;
    const auto description = [&](int dataOffset) {
        const QByteArray entries = itemEntries(
            layout,
            {itemEntry(layout, exifId, QByteArray("Exif\0", 5)),
             itemEntry(layout, xmpId, QByteArray("mime\0application/rdf+xml\0", 25))});
        const QByteArray locations = itemLocationsHead(layout)
            + itemLocation(layout, exifId, dataOffset, exifItem.size())
            + itemLocation(layout, xmpId, dataOffset + exifItem.size(), xmp.size());
        return fullBox(
            "meta", 0,
            fullBox("hdlr", 0, QByteArray("\0\0\0\0pict\0\0\0\0\0\0\0\0\0\0\0\0\0", 21)) + entries
                + fullBox("iloc", itemLocationsVersion(layout), locations)
                + (layout == HeifLayout::DataBox ? box("idat", data) : QByteArray()));
    };
    const QByteArray type = box("ftyp", QByteArray("heic\0\0\0\0mif1heic", 16));
    if (layout == HeifLayout::DataBox) {
        return type + description(0);
    }
    constexpr int boxHeadSize = 8;
    const int dataOffset = type.size() + description(0).size() + boxHeadSize;
    return type + description(dataOffset) + box("mdat", data);
}
