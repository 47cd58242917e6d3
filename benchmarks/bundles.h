// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Where packages install their bundles.
QString installPath();

/// The directory of a bundle, by its number from 0 on, and its moodset file.
QString bundlePath(int number);
QString bundleFile(int number);

/// Installs as many bundles, each a copy of the same sample, with a wallpaper and three tones,
/// under its own name. Ends this process if it cannot.
void installBundles(int count);

/// Gives an installed bundle's file another name for the moodset, and another time.
void changeBundle(int number);

/// Gives an installed bundle another picture, a JPEG, in the layout of a version of moodset files.
void changeWallpaper(int number, const QString& picture, int version);

/// The path of a bundle's picture.
QString wallpaperPath(int number);
