// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>

/// The tags that a camera writes of one picture.
struct ExifTags
{
    QDateTime dateTaken;
    /// 1 to 8
    int orientation = 1;
    /// A JPEG file; empty for none.
    QByteArray thumbnail;
};

/// The segment of a JPEG file that holds the tags, to stand behind the file's first two bytes.
QByteArray exifSegment(const ExifTags& tags);
