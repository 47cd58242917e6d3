// SPDX-License-Identifier: BSD-3-Clause
#include "mediabox.h"

#include "bytereader.h"
#include "windowedfile.h"

std::optional<MediaBox> mediaBoxAt(WindowedFile& file, qint64 offset, qint64 limit)
{
    constexpr int longHeadSize = 16;
    ByteReader head(file.read(offset, int(qMin<qint64>(longHeadSize, limit - offset))));
    quint64 size = head.u32();
    const QByteArray type = head.take(4);
    if (size == 1) {
        size = head.u64();
    } else if (size == 0) {
        size = quint64(limit - offset); // up to the end
    }
    const bool fits = size >= quint64(head.position()) && size <= quint64(limit - offset);
    if (!head.isGood() || !fits) {
        return {};
    }
    const qint64 end = offset + qint64(size);
    return MediaBox{type, {offset + head.position(), end - offset - head.position()}, end};
}

FileRange findMediaBox(WindowedFile& file, const FileRange& range, const char* type)
{
    const qint64 limit = range.offset + range.length;
    qint64 offset = range.offset;
    while (const std::optional<MediaBox> box = mediaBoxAt(file, offset, limit)) {
        if (box->type == type) {
            return box->content;
        }
        offset = box->end;
    }
    return {};
}
