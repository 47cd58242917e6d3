// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>

/// A file in the database, and the data that were read from it if it is a picture.
struct LibraryFile
{
    /// The content id.
    qint64 id = 0;
    /// The absolute path of the file.
    QString path;
    QString mimeType;
    /// When the file was last changed, as far as the daemon has seen.
    QDateTime modified;
    /// Whether the following members were read from the present version of the file.
    bool current = false;
    /// The size in pixels as stored, before any rotation. Invalid if it is unknown.
    QSize size;
    /// Invalid if the file does not contain it.
    QDateTime taken;
    /// The value of the Exif orientation tag, 0 if the file has none.
    int orientation = 0;

    /// Whether reading the file gave any data. If the daemon knows the tags of a format but cannot
    /// decode it, there are a time and an orientation, but no size.
    bool isReadable() const
    {
        return current && (size.isValid() || taken.isValid() || orientation != 0);
    }

    /// Whether all members are equal. A file that was removed and added again has another id.
    bool operator==(const LibraryFile& other) const
    {
        return path == other.path && mimeType == other.mimeType && modified == other.modified
            && current == other.current && size == other.size && taken == other.taken
            && orientation == other.orientation;
    }
    bool operator!=(const LibraryFile& other) const { return !(*this == other); }
};
