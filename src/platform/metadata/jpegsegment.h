// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "filerange.h"

#include <optional>

class WindowedFile;

/// The offset of the first segment of a JPEG file.
constexpr qint64 FirstJpegSegment = 2;

/// A segment of a JPEG file with a length. These segments describe the picture and precede its
/// pixels.
struct JpegSegment
{
    static constexpr quint8 StartOfScan = 0xda;
    static constexpr quint8 EndOfImage = 0xd9;

    /// The code that tells what the segment holds.
    quint8 marker = 0;
    /// The bytes after the length.
    FileRange content;
    /// Whether there are bytes before it that belong to no segment.
    bool isPadded = false;

    /// Whether this is the last segment before the pixels or before the end.
    bool isLast() const { return marker == StartOfScan || marker == EndOfImage; }
};

/// The segment that begins at `offset` or shortly after it; nothing if there is none.
std::optional<JpegSegment> jpegSegmentAt(WindowedFile& file, qint64 offset);
