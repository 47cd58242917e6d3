// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QLatin1String>
#include <QString>

/// The keys that the daemon writes when a moodset comes into force.
namespace ThemeKey {
const QLatin1String Request("/desktop/tuvalo/background/portrait/picture_filename");
const QLatin1String HomeWallpaper("/desktop/zavro/background/portrait/home_picture_filename");
const QLatin1String ApplicationWallpaper("/desktop/zavro/background/portrait/app_picture_filename");
const QLatin1String Highlight("/desktop/zavro/theme/color/highlight");
const QLatin1String SecondaryHighlight("/desktop/zavro/theme/color/secondaryHighlight");
const QLatin1String Primary("/desktop/zavro/theme/color/primary");
const QLatin1String Secondary("/desktop/zavro/theme/color/secondary");
const QLatin1String ActiveMoodset("/desktop/zavro/theme/active_moodset");
} // namespace ThemeKey

/// The theme in force, as a shell reads it from the key/value store. A text is empty, and a colour
/// invalid, where its key is not set.
struct Theme
{
    /// Reads the theme. Needs an application object; main thread only.
    static Theme read();

    /// The path of what was asked for, a moodset file or a picture.
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
