// SPDX-License-Identifier: BSD-3-Clause
#include "jpegsegment.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <QByteArray>

namespace {

constexpr int LengthSize = 2;

/// The offset of the code of the marker at `offset` or shortly after it; -1 if there is none.
int findMarker(WindowedFile& file, qint64 offset, bool* isPadded)
{
    // Some programs write a few bytes between the segments. With more bytes, the file is not a
    // picture.
    constexpr int maximumPadding = 256;
    const QByteArray bytes = file.read(offset, maximumPadding);
    int position = bytes.indexOf('\xff');
    *isPadded = position > 0;
    while (position >= 0 && position < bytes.size() && bytes.at(position) == '\xff') {
        ++position;
    }
    return position < bytes.size() ? position : -1;
}

} // namespace

std::optional<JpegSegment> jpegSegmentAt(WindowedFile& file, qint64 offset)
{
    constexpr int headSize = 2 + LengthSize;
    JpegSegment segment;
    QByteArray bytes = file.read(offset, headSize);
    int position = 1;
    // Nearly all segments begin where the segment before ends.
    if (!bytes.startsWith('\xff') || (bytes.size() > 1 && bytes.at(1) == '\xff')) {
        position = findMarker(file, offset, &segment.isPadded);
        if (position < 0) {
            return {};
        }
        bytes = file.read(offset + position - 1, headSize);
    }
    ByteReader head(bytes);
    head.u8();
    segment.marker = head.u8();
    const int length = head.u16() - LengthSize; // The length includes itself.
    if (!head.isGood() || length < 0) {
        return {};
    }
    segment.content = {offset + position - 1 + headSize, length};
    return segment;
}
