// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

struct XmpTags;

/// The tags of one picture file, read once when the object is made.
///
/// Files of these kinds have tags, and their content tells the kind, not their name: JPEG, PNG,
/// WebP, TIFF with the raw kinds that are built like it, HEIF and AVIF. Only their headers are
/// read, never the pixels: a few pages and some microseconds for each.
///
/// An entry is invalid where the file does not give a valid value: where the file is missing, is no
/// regular file (a FIFO is not waited for), is of another kind, is damaged or cut off before the
/// value's end. Nothing is logged and nothing is thrown, and time and memory are bounded for any
/// file. Use from one thread at a time.
class QuillMetadata
{
public:
    /// The tags that can be asked for, by the numbers that callers pass to entry().
    enum Tag : int {
        /// When the picture was taken: a QDateTime, with milliseconds and with the offset from UTC
        /// where the file gives them, in local time otherwise. It is the first valid date of Exif's
        /// DateTimeOriginal, DateTimeDigitized and DateTime, then of XMP's exif:DateTimeOriginal,
        /// photoshop:DateCreated and xmp:CreateDate. A date alone means the beginning of that day;
        /// blank, zero and impossible dates are invalid. exifDate() has the spellings.
        TimestampTag = 6,
        /// The orientation of the stored pixels: an int from 1 (upright) to 8, from Exif, then from
        /// XMP's tiff:Orientation. Other numbers are invalid.
        OrientationTag = 17
    };

    /// The kinds of metadata to read, a mask of bits.
    enum Format : int { ExifFormat = 0x2, XmpFormat = 0x4, AllFormats = -2 };

    /// Reads the tags of the file at the local path `path`, of the kinds in `formats`. Where both
    /// kinds hold a valid value for a tag, Exif is believed.
    explicit QuillMetadata(const QString& path, int formats = AllFormats);

    /// The value of `tag` (a Tag), or an invalid variant where the file does not give a valid one
    /// or the tag is unknown.
    [[nodiscard]] QVariant entry(int tag) const;

private:
    void complete(const XmpTags& tags);

    QDateTime m_timestamp;
    int m_orientation = 0;
};
