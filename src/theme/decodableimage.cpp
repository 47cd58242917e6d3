// SPDX-License-Identifier: BSD-3-Clause
#include "decodableimage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

bool isDecodable(const QImageReader& reader)
{
    const QByteArray format = reader.format();
    return format != "svg" && format != "svgz";
}

QImage imageFromData(const QByteArray& data)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    return isDecodable(reader) ? reader.read() : QImage();
}
