// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

/// The theme as a shell reads it from the key/value store. A text is empty, and a colour
/// invalid, where its key is not set.
struct Theme
{
    /// Reads the theme. Needs an application object; main thread only.
    static Theme read();

    /// The path of the moodset file or picture that a client has requested.
    QString request;
    /// The paths of the wallpapers.
    QString homeWallpaper;
    QString applicationWallpaper;
    QColor highlight;
    QColor secondaryHighlight;
    QColor primary;
    QColor secondary;
    /// The path of the active moodset's file or picture.
    QString activeMoodset;
};
