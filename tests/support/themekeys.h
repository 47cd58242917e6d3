// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

class LibraryDatabase;

/// The keys that other processes follow for the theme, in the order of writing.
namespace ThemeKeys {

extern const QString Picture;
extern const QString HomeWallpaper;
extern const QString ApplicationWallpaper;
extern const QString HighlightColor;
extern const QString SecondaryHighlightColor;
extern const QString PrimaryColor;
extern const QString SecondaryColor;
extern const QString ActiveMoodset;
/// The key that is written last.
extern const QString PartnerSpace;

/// The first eight.
const QStringList& names();

/// A key with a text, in the form of the store's own tools: "/key='text'".
QString written(const QString& key, const QString& text);

/// The first eight keys with their texts after the moodset of the file `path` was applied by a
/// request for the file `request`. The moodset's row is read from `library`.
QStringList ofMoodset(const LibraryDatabase& library, const QString& path, const QString& request);

} // namespace ThemeKeys

/// The name of a wallpaper that is made from the file `source`. `suffix` is "hp.jpg" for the home
/// wallpaper, and "ap.jpg" for the application wallpaper.
QString wallpaperName(const QString& source, const QString& suffix);
