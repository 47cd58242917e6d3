// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class QImage;

/// Writes a wallpaper to the file at the local path `path`, in the format of the path's suffix and
/// at quality 93. Returns an empty text on success, otherwise the reason of the failure.
///
/// A reader sees the old file or the new one, never a part. If the new one cannot be written, for
/// instance because the disk is full, the old one stays. If the process is killed while it writes,
/// no part of the new file stays on file systems that allow files without a name, as local ones do.
///
/// Other programs may read a wallpaper. So it contains only the pixels of `image` and their colour
/// space, and no other data from its source, such as comments or the place where it was taken.
QString writeWallpaper(const QImage& image, const QString& path);
