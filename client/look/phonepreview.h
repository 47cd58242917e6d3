// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme.h"

#include <QImage>
#include <QSize>
#include <QString>

/// The pictures that a theme's preview is made of.
struct Wallpapers
{
    QImage home;
    QImage application;
};

/// The size in pixels of a preview.
constexpr QSize PhonePreviewSize{1344, 1216};

/// Two phones side by side, one with the home screen and one with an application's view, above the
/// name of what is shown and the theme's four colours. Needs a QGuiApplication.
QImage phonePreview(const Theme& theme, const Wallpapers& wallpapers, const QString& name);
