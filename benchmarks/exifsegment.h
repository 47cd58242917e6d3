// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>

/// The tags that a camera writes into a picture.
struct ExifTags
{
    QDateTime dateTaken;
    /// 1 to 8
    int orientation = 1;
    /// A JPEG file. Empty if there is no thumbnail.
    QByteArray thumbnail;
};

/// The segment of a JPEG file that contains the tags. It follows the first two bytes of the file.
QByteArray exifSegment(const ExifTags& tags);
