// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

/// The user's thumbnails as all programs of a desktop share them: the thumbnail standard of
/// freedesktop.org, in the directory "thumbnails" of the user's cache. Any thread may use it.
namespace ThumbnailCache {

/// The length of the longer side of the smallest thumbnails of the cache that show `side` pixels; 0
/// if all are smaller.
int sideFor(int side);

/// A thumbnail of that side, or one that is larger, of the file at the absolute path `path`, as it
/// was changed last at `modified`. Null if the cache has none of it in that state.
QImage find(const QString& path, const QDateTime& modified, int side);

/// Stores a thumbnail whose longer side is `side` for others and for the next time; what cannot be
/// stored is made again then. A file that has just been changed may change again without another
/// time, so its thumbnail is not stored.
void store(const QString& path, const QDateTime& modified, int side, QImage thumbnail);

} // namespace ThumbnailCache
