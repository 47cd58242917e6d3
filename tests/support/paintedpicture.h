// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QPoint>
#include <QRgb>
#include <QSize>
#include <QString>

/// A picture each of whose pixels tells its own place, up to 4095 pixels wide and high.
QImage coordinatePicture(const QSize& size);

/// The place that a pixel of such a picture tells, if it has not been changed.
QPoint coordinates(QRgb pixel);

/// A picture of pixels without order, the same for each size, so that no part of it looks like
/// another when it is scaled.
QImage noisePicture(const QSize& size);

/// A picture of four colours: red and green above, blue and white below.
QImage quadrantPicture(const QSize& size);

/// The colours of the quadrants of an image, clockwise from the top left: "RGWB" for
/// quadrantPicture(). Letters stand for red, green, blue, white and black ("K"), and "?" for
/// anything further than 60 levels from these.
QString quadrants(const QImage& image);
