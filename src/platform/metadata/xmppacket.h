// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// What an XMP packet says about the time of taking and the orientation, unchecked. Absent texts
/// are empty.
struct XmpTags
{
    QByteArray original; ///< exif:DateTimeOriginal
    QByteArray created; ///< photoshop:DateCreated
    QByteArray digitized; ///< xmp:CreateDate
    QByteArray orientation; ///< tiff:Orientation
};

/// Reads a packet, XML text in UTF-8. A malformed one has no tags. Use from one thread at a time.
XmpTags readXmpTags(const QByteArray& packet);
