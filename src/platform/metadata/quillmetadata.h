// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

/// The tags of one picture file, read once when the object is made.
///
/// Only the file's header is read, never the picture's pixels. A file that is missing, is no regular
/// file, is damaged or is of a kind without tags gives an object whose entries are all invalid;
/// nothing is logged and nothing is thrown. Use from one thread at a time.
class QuillMetadata
{
public:
    /// The tags that can be asked for, by the numbers that callers pass to entry().
    enum Tag : int {
        /// When the picture was taken: a QDateTime, with milliseconds and with the offset from UTC
        /// where the file gives them, in local time otherwise.
        TimestampTag = 6,
        /// The Exif orientation: an int from 1 (upright) to 8.
        OrientationTag = 17
    };

    /// The kinds of metadata to read, a mask of bits.
    enum Format : int { ExifFormat = 0x2, XmpFormat = 0x4, AllFormats = -2 };

    /// Reads the tags of the file at the local path `path`, of the kinds in `formats`. Where both
    /// kinds hold a tag, Exif is believed.
    explicit QuillMetadata(const QString& path, int formats = AllFormats);

    /// The value of `tag` (a Tag), or an invalid variant where the file does not give a valid one or
    /// the tag is unknown.
    QVariant entry(int tag) const;

private:
    QDateTime m_timestamp;
    int m_orientation = 0;
};
