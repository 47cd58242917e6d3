// SPDX-License-Identifier: BSD-3-Clause
#include "encodedpicture.h"

#include "byteorder.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QTest>

QByteArray encodedPicture(const QImage& image, const char* format, bool isProgressive)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    if (!writer.write(image)) {
        QTest::qFail(qPrintable(writer.errorString()), __FILE__, __LINE__);
    }
    return buffer.data();
}

QByteArray topDownBmp(const QImage& image)
{
    constexpr int heightOffset = 22;
    const QByteArray height = littleEndian(qint32(-image.height()));
    return encodedPicture(image.mirrored(), "bmp").replace(heightOffset, height.size(), height);
}
