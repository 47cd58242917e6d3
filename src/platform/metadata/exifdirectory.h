// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tagblocks.h"

#include <QByteArray>

class RegularFile;

/// One date of the Exif directories, as the texts of its three tags. Absent ones are empty.
struct ExifDateTags
{
    QByteArray date;
    QByteArray subSeconds;
    QByteArray offset;
};

/// What the Exif directories say about the time of taking and the orientation, unchecked.
struct ExifTags
{
    ExifDateTags original;
    ExifDateTags digitized;
    ExifDateTags modified;
    /// The orientation's number, 0 if there is none.
    quint32 orientation = 0;
    /// The XMP packet, which TIFF files hold in a tag.
    FileRange xmp;
};

/// Reads the main and the Exif directory of the block, which begins with a TIFF header. Only these
/// tags are read, whatever else the directories list, so that neither time nor memory depends on
/// the sizes that a hostile file claims. Where a tag is given twice, the first counts.
ExifTags readExifTags(RegularFile& file, const FileRange& block);
