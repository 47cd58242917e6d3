// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>

/// A picture file as the database holds it.
struct Photo
{
    /// The absolute path of the file.
    QString path;
    QString mimeType;
    /// When the file was last changed, as the daemon last saw it.
    QDateTime modified;
    /// Whether what follows has been read from the file as it is now.
    bool current = false;
    /// In pixels, as stored, before any rotation. Invalid if that is not known.
    QSize size;
    /// Invalid if the file does not say.
    QDateTime taken;
    /// The value of the Exif orientation tag, 0 if the file has none.
    int orientation = 0;

    /// Whether the file has been read and gave anything. A format that the daemon knows the tags of
    /// but cannot decode gives a time and an orientation, and no size.
    bool isReadable() const
    {
        return current && (size.isValid() || taken.isValid() || orientation != 0);
    }

    bool operator==(const Photo& other) const
    {
        return path == other.path && mimeType == other.mimeType && modified == other.modified
            && current == other.current && size == other.size && taken == other.taken
            && orientation == other.orientation;
    }
    bool operator!=(const Photo& other) const { return !(*this == other); }
};
