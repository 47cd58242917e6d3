// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme.h"

#include <QImage>

/// The home screen of a phone that follows the theme: the wallpaper, a clock, two events and some
/// applications. A null wallpaper is black.
QImage homeScreen(const Theme& theme, const QImage& wallpaper);
