// SPDX-License-Identifier: BSD-3-Clause
#include "samplepictures.h"

#include "byteorder.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "paintedpicture.h"

#include <QImage>
#include <QPair>
#include <QVector>

namespace {

const QSize Size(40, 30);
const QByteArray Date = QByteArrayLiteral("2020:01:02 03:04:05");

using Samples = std::vector<SamplePicture>;

void addJpegs(Samples* samples)
{
    const QImage picture = coordinatePicture(Size);
    samples->push_back({"JPEG", encodedPicture(picture, "jpeg")});
    samples->push_back({"JPEG, progressive", encodedPicture(picture, "jpeg", true)});
    samples->push_back(
        {"JPEG, grey", encodedPicture(picture.convertToFormat(QImage::Format_Grayscale8), "jpeg")});
    samples->push_back({"JPEG with tags", jpegWithExif(exifBlock(Date, 6), xmpPacket({}))});
    constexpr int secondSegment = 20;
    for (const char* const padding : {"\xff\xff\xff", "abc"}) {
        QByteArray padded = encodedPicture(picture, "jpeg").insert(secondSegment, padding);
        samples->push_back({QByteArray("JPEG padded with ") + padding, padded});
    }
}

void addPngs(Samples* samples)
{
    const QImage picture = coordinatePicture(Size);
    const QVector<QPair<const char*, QImage::Format>> forms{
        {"PNG", QImage::Format_RGB888},        {"PNG, grey", QImage::Format_Grayscale8},
        {"PNG, one bit", QImage::Format_Mono}, {"PNG, palette", QImage::Format_Indexed8},
        {"PNG, alpha", QImage::Format_ARGB32}, {"PNG, 16 bits", QImage::Format_RGBA64}};
    for (const auto& [name, format] : forms) {
        samples->push_back({name, encodedPicture(picture.convertToFormat(format), "png")});
    }
    samples->push_back({"PNG with tags", pngWithExif(exifBlock(Date, 6), xmpPacket({}))});
    samples->push_back(
        {"PNG with a text", pngWithChunks(pngText("tEXt", "Comment", QByteArray(9000, 'x')))});
}

/// A picture of one colour, of Size.
QByteArray losslessWebP()
{
    return QByteArrayLiteral(
        "RIFF\x1a\0\0\0WEBPVP8L\x0d\0\0\0\x2f\x27\x40\x07\x10\x88\x88\x08\x08\x88"
        "\x88\x08\x08\0");
}

QByteArray webpChunk(const QByteArray& type, const QByteArray& content)
{
    return type + littleEndian(quint32(content.size())) + content;
}

/// An animation of one frame, smaller than its canvas.
QByteArray animatedWebP()
{
    constexpr int fileHeadSize = 12;
    const auto number = [](int value) { return littleEndian(quint32(value)).left(3); };
    const QSize frame(20, 10);
    const QByteArray pixels = encodedPicture(coordinatePicture(frame), "webp").mid(fileHeadSize);
    const QByteArray place = number(2) + number(1) + number(frame.width() - 1)
        + number(frame.height() - 1) + number(100) + '\0';
    const QByteArray chunks = "WEBP"
        + webpChunk("VP8X",
                    QByteArray("\x02\0\0\0", 4) + number(Size.width() - 1)
                        + number(Size.height() - 1))
        + webpChunk("ANIM", QByteArray(6, '\0')) + webpChunk("ANMF", place + pixels);
    return webpChunk("RIFF", chunks);
}

void addWebPs(Samples* samples)
{
    const QImage picture = coordinatePicture(Size);
    samples->push_back({"WebP, lossy", encodedPicture(picture, "webp")});
    samples->push_back({"WebP, extended", webpWithExif(exifBlock(Date, 6), xmpPacket({}))});
    samples->push_back({"WebP, lossless", losslessWebP()});
    samples->push_back({"WebP, animated", animatedWebP()});
}

void addTiffs(Samples* samples)
{
    const QImage picture = coordinatePicture(Size);
    samples->push_back({"TIFF", encodedPicture(picture, "tiff")});
    samples->push_back(
        {"TIFF, one bit", encodedPicture(picture.convertToFormat(QImage::Format_Mono), "tiff")});
    samples->push_back(
        {"TIFF with tags", tiffWithExif(ExifBuilder().number(ExifBuilder::Orientation, 6))});
    samples->push_back(
        {"TIFF, most significant first", tiffWithExif(ExifBuilder(ExifBuilder::Order::BigEndian))});
}

/// A header of so many bytes, of a picture of so many bits for each pixel.
QByteArray bmpWithHeader(quint32 headerSize, qint32 height, quint16 bits, quint32 compression)
{
    constexpr quint32 oldHeaderSize = 12;
    constexpr quint32 fileHeaderSize = 14;
    QByteArray header = littleEndian(headerSize);
    if (headerSize == oldHeaderSize) {
        header += littleEndian(qint16(Size.width())) + littleEndian(qint16(height));
    } else {
        header += littleEndian(qint32(Size.width())) + littleEndian(height);
    }
    header += littleEndian(quint16(1)) + littleEndian(bits);
    if (headerSize > oldHeaderSize) {
        header += littleEndian(compression);
    }
    header += QByteArray(int(headerSize) - header.size(), '\0');
    const QByteArray pixels(4 * Size.width() * Size.height(), '\x7f');
    return "BM" + littleEndian(quint32(fileHeaderSize) + headerSize + quint32(pixels.size()))
        + QByteArray(4, '\0') + littleEndian(fileHeaderSize + headerSize) + header + pixels;
}

void addBmps(Samples* samples)
{
    samples->push_back({"BMP", encodedPicture(coordinatePicture(Size), "bmp")});
    samples->push_back({"BMP, from top to bottom", topDownBmp(coordinatePicture(Size))});
    for (const quint32 headerSize : {12U, 40U, 64U, 108U, 124U}) {
        const QByteArray name = "BMP, header of " + QByteArray::number(headerSize);
        samples->push_back({name, bmpWithHeader(headerSize, Size.height(), 24, 0)});
    }
    samples->push_back({"BMP, masks", bmpWithHeader(108, -Size.height(), 32, 3)});
    samples->push_back({"BMP, run length of 8 bits", bmpWithHeader(40, Size.height(), 8, 1)});
    samples->push_back({"BMP, run length of 4 bits", bmpWithHeader(40, Size.height(), 4, 2)});
}

QByteArray gif(const QSize& screen, const QRect& frame, const QByteArray& extensions)
{
    const auto number = [](int value) { return littleEndian(quint16(value)); };
    const QByteArray colors("\0\0\0\xff\xff\xff", 6);
    return "GIF89a" + number(screen.width()) + number(screen.height()) + QByteArray("\x80\0\0", 3)
        + colors + extensions + ',' + number(frame.x()) + number(frame.y()) + number(frame.width())
        + number(frame.height()) + '\0' + QByteArray("\2\2\x4c\1\0;", 6);
}

void addGifs(Samples* samples)
{
    const QByteArray extensions("!\xf9\4\0\0\0\0\0!\xff\x0bNETSCAPE2.0\3\1\0\0\0", 27);
    samples->push_back({"GIF", gif(Size, QRect({0, 0}, Size), {})});
    samples->push_back({"GIF with extensions", gif(Size, QRect({0, 0}, Size), extensions)});
    samples->push_back({"GIF, small frame", gif(Size, QRect(10, 20, 3, 4), extensions)});
    samples->push_back({"GIF, vast screen", gif(QSize(9000, 20), QRect(1, 2, 3, 4), extensions)});
    samples->push_back({"GIF, no screen", gif(QSize(0, 0), QRect(1, 2, 3, 4), {})});
}

void addPnms(Samples* samples)
{
    for (const char* const format : {"pbm", "pgm", "ppm"}) {
        samples->push_back({format, encodedPicture(quadrantPicture(Size), format)});
    }
    samples->push_back({"plain pbm", "P1\n4 3\n0 1 0 1\n1 0 1 0\n1 1 1 1\n"});
    samples->push_back({"pgm with comments", "P5 # a\n#b\n 4 #c\n #d\n3\t\r\n255\nabcdefghijkl"});
    samples->push_back({"plain ppm", "P3 1 1 255 1 2 3\n"});
}

} // namespace

std::vector<SamplePicture> samplePictures()
{
    Samples samples;
    for (const auto add : {addJpegs, addPngs, addWebPs, addTiffs, addBmps, addGifs, addPnms}) {
        add(&samples);
    }
    return samples;
}
