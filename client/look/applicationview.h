// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme.h"

#include <QImage>

/// An application's view on a phone that follows the theme: a header, a list and controls on the
/// wallpaper. A null wallpaper is black.
QImage applicationView(const Theme& theme, const QImage& wallpaper);
