// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tagblocks.h"

#include <QByteArray>

class WindowedFile;

/// One date of the Exif directories, as the texts of its three tags. Absent ones are empty.
struct ExifDateTags
{
    QByteArray date;
    QByteArray subSeconds;
    QByteArray offset;
};

/// The values of the Exif directories for the time and the orientation, unchecked.
struct ExifTags
{
    ExifDateTags original;
    ExifDateTags digitized;
    ExifDateTags modified;
    /// The number of the orientation; 0 if there is none.
    quint32 orientation = 0;
    /// The XMP packet, which a tag of TIFF files contains.
    TagBlock xmp;
};

/// Reads the main directory and the Exif directory of the block, which begins with a TIFF header.
/// Only these tags are read, so neither time nor memory depends on the sizes that a hostile file
/// claims. If a tag appears twice, the first one counts.
ExifTags readExifTags(WindowedFile& file, const TagBlock& block);

/// The thumbnail that cameras write into the block: the bytes of a JPEG file, with the same
/// orientation as the stored pixels. Empty if there is none.
QByteArray readExifThumbnail(WindowedFile& file, const TagBlock& block);
