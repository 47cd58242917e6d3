// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QRectF>
#include <QString>
#include <QStringList>

/// What the wallpaper library has been asked for. The calls pass through to it.
namespace WallpaperCalls {

struct Build
{
    QImage image;
    QString sourcePath;
    QImage applicationImage;
    QRectF rect;
};

/// The names of the calls since the last time, with their values: "rounds 15".
QStringList take();

/// The latest build.
const Build& lastBuild();

} // namespace WallpaperCalls
