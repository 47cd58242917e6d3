// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Where packages install their bundles.
QString installPath();

/// The directory of a bundle, by its number from 0 on.
QString bundlePath(int number);

/// Installs as many bundles, each a copy of the same sample, with a wallpaper and three tones,
/// under its own name. Ends this process if it cannot.
void installBundles(int count);

/// Gives a bundle's file another name for the moodset, and another time.
void changeBundle(int number);
