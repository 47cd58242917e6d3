// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

/// The cache of thumbnails that all programs of a desktop share, as the thumbnail standard of
/// freedesktop.org describes it: the directory "thumbnails" in the user's cache. Any thread may use
/// it.
namespace ThumbnailCache {

/// The cache has thumbnails of some fixed sizes. This is the longer side of the smallest size that
/// suffices for `side` pixels; 0 if all are smaller.
int sideFor(int side);

/// Finds a thumbnail whose longer side is `side` or longer. It must have been made from the file at
/// the absolute path `path` when the file's modification time was `modified`. Null if there is
/// none.
QImage find(const QString& path, const QDateTime& modified, int side);

/// Stores a thumbnail whose longer side is `side`, for other programs and for the next time. If
/// this fails, the thumbnail is made again the next time. If the file has just changed, its
/// thumbnail is not stored, because the file may change again without getting another modification
/// time.
void store(const QString& path, const QDateTime& modified, int side, QImage thumbnail);

} // namespace ThumbnailCache
