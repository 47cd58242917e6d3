// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

/// What a moodset of a picture looks like: made as the daemon makes it, with nothing written.
struct PictureTheme
{
    /// Makes the look of the picture at a local path; of null images if it cannot be read. A
    /// picture gets a darkened home wallpaper, that of a bundle is used as it is, and one of a
    /// legacy bundle is cut from the older layout.
    enum class Kind { Picture, Bundle, LegacyBundle };
    static PictureTheme make(const QString& path, Kind kind);

    QImage home;
    QImage application;
    QColor primary;
    QColor secondary;
    QColor highlight;
    QColor secondaryHighlight;
};
