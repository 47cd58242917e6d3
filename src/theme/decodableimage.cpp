// SPDX-License-Identifier: BSD-3-Clause
#include "decodableimage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <new>

bool isDecodable(const QImageReader& reader)
{
    const QByteArray format = reader.format();
    return format != "svg" && format != "svgz";
}

QImage imageFromData(const QByteArray& data)
{
    QBuffer buffer;
    buffer.setData(data);
    try {
        QImageReader reader(&buffer);
        return isDecodable(reader) ? reader.read() : QImage();
    } catch (const std::bad_alloc&) {
        // Some of the reader's plugins copy the data.
        return QImage();
    }
}
