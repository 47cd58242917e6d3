// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

class RegularFile;

/// Where a block of bytes stands in a file. An empty one has the length 0.
struct FileRange
{
    qint64 offset = 0;
    qint64 length = 0;

    [[nodiscard]] bool isEmpty() const { return length <= 0; }
};

/// The blocks of a picture file that hold its tags.
struct TagBlocks
{
    /// The Exif directories, from their TIFF header on.
    FileRange exif;
    /// The XMP packet, as XML text.
    FileRange xmp;
};

/// Finds the tags' blocks in a JPEG, PNG, WebP, TIFF, HEIF or AVIF file. The kind of file is told
/// from its content, and the pixels are stepped over. The packet of a TIFF file stands in one of
/// its directories and is not looked for here.
TagBlocks findTagBlocks(RegularFile& file);
