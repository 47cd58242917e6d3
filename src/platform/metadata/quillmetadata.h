// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

class WindowedFile;
struct XmpTags;

/// The tags of one picture file, read once when the object is made.
///
/// The content decides the kind of the file, not the name. These kinds have tags: JPEG, PNG, WebP,
/// TIFF and the raw formats that are based on it, HEIF and AVIF. Only the headers are read, never
/// the pixels. This takes a few pages of memory and some microseconds for each file. In PNG files,
/// tags in texts ("Raw profile type exif") count, too.
///
/// An entry is invalid if the file has no valid value for it, is missing, is not a regular file
/// (opening a FIFO does not block), is of another kind, is damaged, or ends before the value.
/// Nothing is logged and no exception is thrown, and time and memory are limited for any file. Use
/// an object from one thread at a time.
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

    /// Reads the tags of the file at the local path `path`, of the kinds in `formats`. If both
    /// kinds have a valid value for a tag, that of Exif is used.
    explicit QuillMetadata(const QString& path, int formats = AllFormats);

    /// The same for an open file. Use it only in code that is certainly linked with this library;
    /// all other code uses pictureTags().
    explicit QuillMetadata(WindowedFile& file, int formats = AllFormats);

    /// The value of `tag` (a Tag). An invalid variant if the file has no valid value or the tag is
    /// unknown.
    QVariant entry(int tag) const;

private:
    void read(WindowedFile& file, int formats);
    void complete(const XmpTags& tags);

    QDateTime m_timestamp;
    int m_orientation = 0;
};
