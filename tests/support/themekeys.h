// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

class LibraryDatabase;

/// The keys that other processes follow for the theme, in the order in which they are written.
namespace ThemeKeys {

extern const QString picture;
extern const QString homeWallpaper;
extern const QString applicationWallpaper;
extern const QString highlightColor;
extern const QString secondaryHighlightColor;
extern const QString primaryColor;
extern const QString secondaryColor;
extern const QString activeMoodset;
/// The one that is written after all the others.
extern const QString partnerSpace;

/// The first eight.
const QStringList& names();

/// A key with a text, as the store's own tools print it: "/key='text'".
QString written(const QString& key, const QString& text);

/// The first eight keys with their texts once the moodset of the file `path` has come into force by
/// a request for the file `request`, after the moodset's row.
QStringList ofMoodset(const LibraryDatabase& library, const QString& path, const QString& request);

} // namespace ThemeKeys

/// The name of a wallpaper that is made from the file `source`; `suffix` is "hp.jpg" for the home
/// wallpaper, and "ap.jpg" for the application wallpaper.
QString wallpaperName(const QString& source, const QString& suffix);
