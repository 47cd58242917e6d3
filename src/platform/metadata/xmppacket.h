// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// The values of an XMP packet for the time when the picture was taken and for the orientation,
/// unchecked. Absent texts are empty.
struct XmpTags
{
    QByteArray original; ///< exif:DateTimeOriginal
    QByteArray created; ///< photoshop:DateCreated
    QByteArray digitized; ///< xmp:CreateDate
    QByteArray orientation; ///< tiff:Orientation
};

/// Reads a packet, which is XML text in UTF-8. A malformed packet has no tags. Use it from one
/// thread at a time.
XmpTags readXmpTags(const QByteArray& packet);
