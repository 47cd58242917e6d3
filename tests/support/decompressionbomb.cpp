// SPDX-License-Identifier: BSD-3-Clause
#include "decompressionbomb.h"

#include "byteorder.h"

#include "encodedpicture.h"
#include "exifbuilder.h"

#include <QColor>
#include <QImage>
#include <QTest>

#include <zlib.h>

namespace {

QByteArray pngOf(const QSize& size, const QByteArray& depthAndKind, const QByteArray& pixels)
{
    const QByteArray header = bigEndian(quint32(size.width())) + bigEndian(quint32(size.height()))
        + depthAndKind + QByteArray(3, '\0');
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header) + pngChunk("IDAT", pixels)
        + pngChunk("IEND", {});
}

} // namespace

QByteArray compressedZeros(qint64 length)
{
    constexpr int piece = 1 << 16;
    QByteArray zeros(piece, '\0');
    QByteArray compressed;
    QByteArray output(piece, '\0');
    z_stream stream = {};
    int state = deflateInit(&stream, Z_DEFAULT_COMPRESSION);
    while (state == Z_OK) {
        if (stream.avail_in == 0) {
            stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
            stream.avail_in = uInt(qMin<qint64>(length, piece));
            length -= stream.avail_in;
        }
        stream.next_out = reinterpret_cast<Bytef*>(output.data());
        stream.avail_out = uInt(output.size());
        state = deflate(&stream, length > 0 ? Z_NO_FLUSH : Z_FINISH);
        compressed += output.left(output.size() - int(stream.avail_out));
    }
    deflateEnd(&stream);
    return compressed;
}

QByteArray pngBomb(const QSize& size)
{
    constexpr int pixelBytes = 100000;
    return pngOf(size, QByteArrayLiteral("\x08\x02"), compressedZeros(pixelBytes));
}

QByteArray completePngBomb(const QSize& size)
{
    const int rowBytes = 1 + (size.width() + 7) / 8;
    const QByteArray oneBitOfGrey("\x01\x00", 2);
    return pngOf(size, oneBitOfGrey, compressedZeros(qint64(rowBytes) * size.height()));
}

QByteArray jpegBomb(const QSize& size, bool isProgressive)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    // The height and the width follow the frame header's marker, its length and the sample depth.
    constexpr int marker = 5;
    const QByteArray claim = bigEndian(quint16(size.height())) + bigEndian(quint16(size.width()));
    QByteArray bytes = encodedPicture(image, "jpeg", isProgressive);
    const int frame = bytes.indexOf(isProgressive ? "\xff\xc2" : "\xff\xc0");
    if (frame < 0) {
        qFatal("the JPEG picture has no frame header");
    }
    return bytes.replace(frame + marker, claim.size(), claim);
}

QByteArray bmpBomb(const QSize& size)
{
    constexpr quint32 fileHeader = 14;
    constexpr quint32 pictureHeader = 40;
    const QByteArray pixels(100, '\0');
    return "BM" + littleEndian(fileHeader + pictureHeader + quint32(pixels.size()))
        + littleEndian(quint32(0)) + littleEndian(fileHeader + pictureHeader)
        + littleEndian(pictureHeader) + littleEndian(qint32(size.width()))
        + littleEndian(qint32(size.height())) + littleEndian(quint16(1)) + littleEndian(quint16(24))
        + QByteArray(24, '\0') + pixels;
}

QByteArray gifBomb(const QSize& size)
{
    const QByteArray claim =
        littleEndian(quint16(size.width())) + littleEndian(quint16(size.height()));
    const QByteArray blackAndWhite("\x80\0\0\0\0\0\xff\xff\xff", 9);
    const QByteArray frameAtOrigin(",\0\0\0\0", 5);
    const QByteArray onePixel("\0\x02\x02\x44\x01\0;", 7);
    return "GIF89a" + claim + blackAndWhite + frameAtOrigin + claim + onePixel;
}

void addBombRows()
{
    const QSize size(30000, 30000);
    const QStringList none;
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("PNG") << pngBomb(size) << none;
    QTest::newRow("PNG with all its pixels")
        << completePngBomb(size)
        << QStringList(QStringLiteral("QImage: out of memory, returning null image"));
    QTest::newRow("progressive JPEG")
        << jpegBomb(size, true) << QStringList(QStringLiteral("Insufficient memory (case 4)"));
    QTest::newRow("BMP") << bmpBomb(size) << none;
    QTest::newRow("GIF") << gifBomb(size) << none;
}
