// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <map>

/// Builds the Exif directories of a picture byte by byte. Tests should not depend on a library that
/// the code under test may use.
class ExifBuilder
{
public:
    enum class Order { LittleEndian, BigEndian };

    /// The numbers of tags. Tags from 0x9000 on are in the Exif directory, the others in the main
    /// one.
    enum Tag : quint16 {
        Orientation = 0x0112,
        DateTime = 0x0132,
        XmpPacket = 0x02bc,
        DateTimeOriginal = 0x9003,
        DateTimeDigitized = 0x9004,
        OffsetTime = 0x9010,
        OffsetTimeOriginal = 0x9011,
        OffsetTimeDigitized = 0x9012,
        SubSecTime = 0x9290,
        SubSecTimeOriginal = 0x9291,
        SubSecTimeDigitized = 0x9292
    };

    /// The numbers of value types.
    enum Type : quint16 { Byte = 1, Ascii = 2, Short = 3, Long = 4, Undefined = 7 };

    explicit ExifBuilder(Order order = Order::LittleEndian);

    /// Sets a tag to a text. The NUL at the end is added.
    ExifBuilder& text(quint16 tag, const QByteArray& text);
    /// Sets a tag to one number of 16 bits.
    ExifBuilder& number(quint16 tag, quint16 number);
    /// Sets a tag to bytes that are written as they are.
    ExifBuilder& value(quint16 tag, quint16 type, quint32 count, const QByteArray& bytes);

    /// The directories with their TIFF header, as all kinds of pictures embed them.
    QByteArray block() const;

    /// Bytes at offset 8 of the block, before the directories.
    ExifBuilder& leadingBytes(const QByteArray& bytes);

private:
    struct Entry
    {
        quint16 type;
        quint32 count;
        QByteArray bytes;
    };
    using Directory = std::map<quint16, Entry>;

    QByteArray number16(quint16 number) const;
    QByteArray number32(quint32 number) const;
    QByteArray serialized(const Directory& directory, int offset) const;

    Order m_order;
    QByteArray m_leadingBytes;
    Directory m_main;
    Directory m_exif;
};

/// The directories of a picture taken at `dateTimeOriginal` ("2020:01:02 03:04:05") and stored with
/// `orientation`. An empty date and a negative orientation are left out.
QByteArray exifBlock(const QByteArray& dateTimeOriginal, int orientation = -1);

/// An XMP packet with the properties as XML attributes: `xmp:CreateDate="2020-01-02"`. The prefixes
/// exif, photoshop, tiff and xmp are declared.
QByteArray xmpPacket(const QByteArray& attributes);

/// Pictures with an Exif block and an XMP packet; an empty one is left out. All of them can be
/// decoded except the HEIF picture, which has no pixels.
QByteArray jpegWithExif(
    const QByteArray& exif, const QByteArray& xmp = {}, const QSize& size = {4, 3});
QByteArray pngWithExif(
    const QByteArray& exif, const QByteArray& xmp = {}, const QSize& size = {4, 3});
QByteArray jpegWithExif(const QImage& picture, const QByteArray& exif, const QByteArray& xmp = {});
QByteArray pngWithExif(const QImage& picture, const QByteArray& exif, const QByteArray& xmp = {});
QByteArray webpWithExif(
    const QByteArray& exif, const QByteArray& xmp = {}, const QSize& size = {4, 3});
QByteArray tiffWithExif(ExifBuilder exif, const QByteArray& xmp = {});

/// A chunk of a PNG file, with its checksum.
QByteArray pngChunk(const QByteArray& type, const QByteArray& content);

/// A chunk of a PNG file with a text. The types are "tEXt", "zTXt" and "iTXt"; the text of an
/// "iTXt" chunk may be compressed.
QByteArray pngText(
    const QByteArray& type, const QByteArray& keyword, const QByteArray& text,
    bool isCompressed = false);

/// A block as a text of digits. Programs used this form before PNG files had a chunk for it.
QByteArray rawProfile(const QByteArray& name, const QByteArray& block);

/// A PNG file with some more chunks after its header.
QByteArray pngWithChunks(const QByteArray& chunks, const QSize& size = {4, 3});

/// How a HEIF file gives the positions of its items.
enum class HeifLayout { MediaData, MediaDataLongNumbers, DataBox };
QByteArray heifWithExif(
    const QByteArray& exif, const QByteArray& xmp = {}, HeifLayout layout = HeifLayout::MediaData);
