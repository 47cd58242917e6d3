// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QPoint>
#include <QRgb>
#include <QSize>
#include <QString>

/// A picture in which the colour of each pixel gives its position, up to 4095 pixels wide and high.
QImage coordinatePicture(const QSize& size);

/// The position that the colour of such a pixel gives, if the colour was not changed.
QPoint coordinates(QRgb pixel);

/// A picture of random pixels, always the same for each size. After scaling, no part of it looks
/// like another part.
QImage noisePicture(const QSize& size);

/// A picture of four colours: red and green in the upper half, blue and white in the lower half.
QImage quadrantPicture(const QSize& size);

/// The colours of the quadrants of an image, clockwise from the top left: "RGWB" for
/// quadrantPicture(). The letters mean red, green, blue, white and black ("K"). A colour that
/// differs from all of these by more than 60 levels is "?".
QString quadrants(const QImage& image);
