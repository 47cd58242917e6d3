// SPDX-License-Identifier: BSD-3-Clause
#include "hostilepicture.h"

#include "byteorder.h"
#include "encodedpicture.h"
#include "exifbuilder.h"
#include "paintedpicture.h"

#include <QImage>
#include <QTest>

QByteArray endlessAnimation()
{
    const QByteArray size = bigEndian(quint32(1));
    const QByteArray header = size + size + bigEndian(quint32(1000)) + QByteArray(16, '\0');
    const QByteArray most = bigEndian(quint32(0x7fffffff));
    const QByteArray level(1, '\0');
    return "\x8aMNG\r\n\x1a\n" + pngChunk("MHDR", header) + pngChunk("LOOP", level + most)
        + pngChunk("ENDL", level) + pngChunk("MEND", {});
}

QByteArray nestedVectorPicture()
{
    constexpr int groups = 40;
    QByteArray picture = "<svg xmlns=\"http://www.w3.org/2000/svg\""
                         " xmlns:xlink=\"http://www.w3.org/1999/xlink\">"
                         "<defs><g id=\"g0\"><rect width=\"1\" height=\"1\"/></g>";
    for (int i = 1; i < groups; ++i) {
        const QByteArray use = "<use xlink:href=\"#g" + QByteArray::number(i - 1) + "\"/>";
        picture += "<g id=\"g" + QByteArray::number(i) + "\">" + use + use + "</g>";
    }
    return picture + "</defs><use xlink:href=\"#g" + QByteArray::number(groups - 1) + "\"/></svg>";
}

void addUnlistedFormats()
{
    const QImage picture = quadrantPicture(QSize(20, 20));
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("XPM") << encodedPicture(picture, "xpm");
    QTest::newRow("XBM") << encodedPicture(picture, "xbm");
    QTest::newRow("ICO") << encodedPicture(picture, "ico");
    QTest::newRow("WBMP") << encodedPicture(picture, "wbmp");
    QTest::newRow("SVG") << QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\""
                                       " height=\"20\"><rect width=\"9\" height=\"9\"/></svg>");
}

void addStartsOfPictures()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("JPEG") << QByteArray("\xff\xd8\xff\xe0\x00\x10JFIF\x00", 11);
    QTest::newRow("PNG") << "\x89PNG\r\n\x1a\n" + bigEndian(quint32(0x7fffffff)) + "teXt";
    QTest::newRow("WebP") << QByteArray("RIFF\xff\xff\xff\xffWEBPVP8X\x0a\0\0\0", 20);
    QTest::newRow("TIFF") << QByteArray("II*\0\x08\0\0\0", 8);
    QTest::newRow("GIF") << QByteArray("GIF89a\x04\0\x04\0", 10);
    QTest::newRow("BMP") << QByteArray("BM");
    QTest::newRow("PNM") << QByteArray("P6\n# a comment that does not end: ");
    QTest::newRow("HEIF") << QByteArray(
        "\0\0\0\x18"
        "ftypheic\0\0\0\0mif1heic",
        24);
    QTest::newRow("AVIF") << QByteArray(
        "\0\0\0\x18"
        "ftypavif\0\0\0\0mif1avif",
        24);
}
