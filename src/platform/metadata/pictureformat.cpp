// SPDX-License-Identifier: BSD-3-Clause
#include "pictureformat.h"

#include "bytereader.h"

#include <QByteArray>

namespace {

/// A file can also have the form for large files, which has another number in its head.
bool isTiff(const QByteArray& start)
{
    const QByteArray head = start.left(4);
    return head == QByteArrayLiteral("II*\0") || head == QByteArrayLiteral("MM\0*")
        || head == QByteArrayLiteral("II+\0") || head == QByteArrayLiteral("MM\0+");
}

bool isPnm(const QByteArray& start)
{
    const QByteArray blanks = QByteArrayLiteral(" \t\n\v\f\r");
    return start.size() > 2 && start.at(0) == 'P' && start.at(1) >= '1' && start.at(1) <= '6'
        && blanks.contains(start.at(2));
}

/// The format of the pictures that a brand in the head of an ISO media file means. Brands for the
/// structure of a file mean no format.
PictureFormat formatOfBrand(const QByteArray& brand)
{
    if (brand == "avif" || brand == "avis") {
        return PictureFormat::Avif;
    }
    const bool isHevc = brand.size() == 4 && (brand.startsWith("hei") || brand.startsWith("hev"));
    return isHevc ? PictureFormat::Heif : PictureFormat::Unknown;
}

/// The format of an ISO media file, which is the format of its first brand that means one.
PictureFormat mediaFormat(const QByteArray& start)
{
    ByteReader box(start);
    const quint32 size = box.u32();
    if (box.take(4) != "ftyp") {
        return PictureFormat::Unknown;
    }
    bool isStructured = false;
    QByteArray brand = box.take(4);
    box.u32(); // the version of the first brand
    for (; box.isGood() && quint32(box.position()) <= size; brand = box.take(4)) {
        const PictureFormat format = formatOfBrand(brand);
        if (format != PictureFormat::Unknown) {
            return format;
        }
        isStructured = isStructured || brand == "mif1" || brand == "msf1";
    }
    return isStructured ? PictureFormat::Heif : PictureFormat::Unknown;
}

} // namespace

PictureFormat pictureFormat(const QByteArray& start)
{
    // The third byte is the first byte of the first marker. Without it, no program reads the file
    // as a picture.
    if (start.startsWith("\xff\xd8\xff")) {
        return PictureFormat::Jpeg;
    }
    if (start.startsWith("\x89PNG\r\n\x1a\n")) {
        return PictureFormat::Png;
    }
    if (start.startsWith("RIFF") && start.mid(8, 4) == "WEBP") {
        return PictureFormat::WebP;
    }
    if (isTiff(start)) {
        return PictureFormat::Tiff;
    }
    if (start.startsWith("GIF87a") || start.startsWith("GIF89a")) {
        return PictureFormat::Gif;
    }
    if (start.startsWith("BM")) {
        return PictureFormat::Bmp;
    }
    return isPnm(start) ? PictureFormat::Pnm : mediaFormat(start);
}

QByteArray decoderName(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Unknown:
        return {};
    case PictureFormat::Jpeg:
        return QByteArrayLiteral("jpeg");
    case PictureFormat::Png:
        return QByteArrayLiteral("png");
    case PictureFormat::WebP:
        return QByteArrayLiteral("webp");
    case PictureFormat::Tiff:
        return QByteArrayLiteral("tiff");
    case PictureFormat::Gif:
        return QByteArrayLiteral("gif");
    case PictureFormat::Bmp:
        return QByteArrayLiteral("bmp");
    case PictureFormat::Pnm:
        return QByteArrayLiteral("ppm");
    case PictureFormat::Heif:
        return QByteArrayLiteral("heif");
    case PictureFormat::Avif:
        return QByteArrayLiteral("avif");
    }
    return {};
}
