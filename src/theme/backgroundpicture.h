// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// The part of the picture at the local path `path` that makes a wallpaper for a screen of `size`
/// pixels: its largest centred square, as a square of the longer side of the screen, so that it
/// covers the screen either way up. It is cut and scaled as it is decoded, and then stands upright.
/// Null, without a message of its own, for a picture that cannot be read, be it for want of memory;
/// decoders may log what is wrong with it.
QImage loadBackgroundImage(const QString& path, const QSize& size);

/// The same for a picture in the older layout, of the screen's width and about five thirds of its
/// height: the part that such a phone shows, in `size` pixels.
QImage loadLegacyBackgroundImage(const QString& path, const QSize& size);

/// The whole picture at a local path, as it is stored; null if it cannot be read.
QImage loadWholeImage(const QString& path);
