// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The wallpapers that the daemon has made. It never deletes any.
struct WallpaperFiles
{
    /// Looks which of them no moodset and no key of the theme refers to. One that was made in the
    /// last minute counts as referred to: its moodset may not be stored yet.
    static WallpaperFiles read();

    /// The directory of the wallpapers.
    static QString folder();

    QStringList unused;
    /// The size of the unused wallpapers in bytes.
    qint64 unusedSize = 0;
    int used = 0;
    /// Why that cannot be told, in one line; then none counts as unused. Empty if it can.
    QString fault;
};
