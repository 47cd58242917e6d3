// SPDX-License-Identifier: BSD-3-Clause
#include "pictureforms.h"

#include "exifsegment.h"

#include <QBuffer>
#include <QImage>

#include <cstdlib>
#include <iostream>

namespace {

/// Pixels that compress about as well as those of a photo.
QImage pixels(const QSize& size, uint seed)
{
    QImage image(size, QImage::Format_RGB888);
    uint noise = seed;
    for (int y = 0; y < image.height(); ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            const uint grain = noise >> 29;
            *line++ = uchar(uint(255 * x / image.width()) + grain);
            *line++ = uchar(uint(255 * y / image.height()) + grain);
            *line++ = uchar((uint(x + y) + seed) / 16 + grain);
        }
    }
    return image;
}

QByteArray encoded(const QImage& image, const char* format, int quality = -1)
{
    QBuffer buffer;
    if (!image.save(&buffer, format, quality)) {
        std::cerr << "makecorpus: this machine cannot write pictures of the format " << format
                  << '\n';
        std::exit(EXIT_FAILURE);
    }
    return buffer.data();
}

/// Packs codes of 9 bits into the blocks of a GIF file.
class GifCodes
{
public:
    void append(uint code)
    {
        m_bits |= code << m_bitCount;
        m_bitCount += 9;
        while (m_bitCount >= 8) {
            takeByte();
        }
    }

    QByteArray blocks()
    {
        if (m_bitCount > 0) {
            takeByte();
        }
        QByteArray result;
        constexpr int blockSize = 255;
        for (int i = 0; i < m_bytes.size(); i += blockSize) {
            const QByteArray block = m_bytes.mid(i, blockSize);
            result += char(block.size());
            result += block;
        }
        return result + '\0';
    }

private:
    void takeByte()
    {
        m_bytes += char(m_bits & 0xff);
        m_bits >>= 8;
        m_bitCount -= 8;
    }

    QByteArray m_bytes;
    uint m_bits = 0;
    int m_bitCount = 0;
};

/// A grey GIF file of 160 by 120 pixels. Qt writes none, so its pixels stand as they are, with the
/// code table cleared before its codes grow longer than 9 bits.
QByteArray gif()
{
    constexpr int width = 160;
    constexpr int height = 120;
    constexpr uint clearCode = 256;
    constexpr uint endCode = 257;
    constexpr int codesPerTable = 250;
    QByteArray file("GIF89a\xa0\0\x78\0\xf7\0\0", 13);
    for (int grey = 0; grey < 256; ++grey) {
        file += QByteArray(3, char(grey));
    }
    file += QByteArray(",\0\0\0\0\xa0\0\x78\0\0\x08", 11);
    GifCodes codes;
    for (int i = 0; i < width * height; ++i) {
        if (i % codesPerTable == 0) {
            codes.append(clearCode);
        }
        codes.append(uint(i % width));
    }
    codes.append(endCode);
    return file + codes.blocks() + ';';
}

} // namespace

PictureForms::PictureForms()
    : m_webp(encoded(pixels({1280, 960}, 7), "webp", 60))
    , m_gif(gif())
    , m_bmp(encoded(pixels({120, 90}, 8), "bmp"))
    , m_thumbnail(encoded(pixels({160, 120}, 9), "jpg", 85))
{
    for (uint seed = 1; seed <= 4; ++seed) {
        m_jpegs.push_back(encoded(pixels({960, 720}, seed), "jpg", 50));
    }
    for (uint seed = 5; seed <= 6; ++seed) {
        m_pngs.push_back(encoded(pixels({200, 150}, seed), "png"));
    }
}

Picture PictureForms::picture(int index) const
{
    constexpr int period = 20;
    const int kind = index % period;
    if (kind < 14) {
        return {".jpg", jpeg(index)};
    }
    if (kind < 17) {
        return {".png", m_pngs.at(size_t(index) % m_pngs.size())};
    }
    if (kind == 17) {
        return {".webp", m_webp};
    }
    return kind == 18 ? Picture{".gif", m_gif} : Picture{".bmp", m_bmp};
}

QDateTime PictureForms::dateTaken(int index)
{
    constexpr qint64 first = 1420113600; // 2015-01-01 12:00 UTC
    constexpr qint64 interval = 4973; // some 80 minutes, so that all times of day come up
    return QDateTime::fromSecsSinceEpoch(first + index * interval, Qt::UTC);
}

QByteArray PictureForms::jpeg(int index) const
{
    constexpr int orientations = 8;
    const QByteArray& file = m_jpegs.at(size_t(index) % m_jpegs.size());
    const ExifTags tags{
        dateTaken(index), 1 + index % orientations, index % 3 == 0 ? QByteArray() : m_thumbnail};
    constexpr int startLength = 2;
    return file.left(startLength) + exifSegment(tags) + file.mid(startLength);
}
