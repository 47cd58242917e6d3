// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// The part of the picture at the local path `path` for the wallpaper of a screen of `size` pixels.
/// It is the largest centred square of the picture, scaled to the longer side of the screen, so
/// that it covers the screen in both orientations. It is cut and scaled while it is decoded, and
/// then turned upright. Null, without a message, if the picture cannot be read, for instance
/// because there is too little memory, and if no screen can have this size. Decoders may log the
/// faults of a picture.
QImage loadBackgroundImage(const QString& path, const QSize& size);

/// The same for a picture in the older layout, which is as wide as the screen and about five thirds
/// as high: the part that such a phone shows, with `size` pixels.
QImage loadLegacyBackgroundImage(const QString& path, const QSize& size);

/// The whole picture at a local path, as it is stored. Null if it cannot be read.
QImage loadWholeImage(const QString& path);
