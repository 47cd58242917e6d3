// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The wallpapers that the daemon has made. It never deletes any.
struct WallpaperFiles
{
    /// Finds the wallpapers to which no moodset and no key of the theme refers. A wallpaper that
    /// was made in the last minute counts as used, because its moodset may not be stored yet.
    static WallpaperFiles read();

    /// The directory of the wallpapers.
    static QString folder();

    QStringList unused;
    /// The size of the unused wallpapers in bytes.
    qint64 unusedSize = 0;
    int used = 0;
    /// The reason why the unused wallpapers cannot be found, in one line; then no wallpaper counts
    /// as unused. Empty if they were found.
    QString fault;
};
