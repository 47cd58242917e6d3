// SPDX-License-Identifier: BSD-3-Clause
#include "pngchunks.h"

#include "bytereader.h"

#include <QIODevice>

namespace {

constexpr int PngSignatureSize = 8;
constexpr int HeadSize = 8;
constexpr int TypeSize = 4;
constexpr int ChecksumSize = 4;

bool hasOverlongChunkFromHere(QIODevice* device, PngChunks which, qint64 end)
{
    qint64 offset = PngSignatureSize;
    while (device->seek(offset)) {
        ByteReader head(device->read(HeadSize));
        const qint64 contentEnd = offset + HeadSize + head.u32();
        const QByteArray type = head.take(TypeSize);
        const bool isLast = type == "IEND" || (type == "IDAT" && which == PngChunks::BeforePixels);
        if (!head.isGood() || isLast) {
            return false;
        }
        if (contentEnd > end) {
            return type != "IDAT";
        }
        offset = contentEnd + ChecksumSize;
    }
    return false;
}

} // namespace

bool hasOverlongChunk(QIODevice* device, PngChunks which, qint64 limit)
{
    const qint64 position = device->pos();
    const bool isOverlong = hasOverlongChunkFromHere(device, which, qMin(device->size(), limit));
    device->seek(position);
    return isOverlong;
}
