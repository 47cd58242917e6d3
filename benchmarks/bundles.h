// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The directory in which packages install their bundles.
QString installPath();

/// The directory of a bundle, by its number from 0 on, and its moodset file.
QString bundlePath(int number);
QString bundleFile(int number);

/// Installs `count` bundles. Each is a copy of the same sample with its own name, a wallpaper and
/// three tones. Ends this process on failure.
void installBundles(int count);

/// Changes the moodset's name in the file of an installed bundle, and the time of the file.
void changeBundle(int number);

/// Replaces the picture of an installed bundle by a JPEG in the layout that belongs to `version` of
/// moodset files.
void changeWallpaper(int number, const QString& picture, int version);

/// The path of a bundle's picture.
QString wallpaperPath(int number);
