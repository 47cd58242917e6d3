// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

/// Pictures of QImage::Format_RGB32, the same in each run.
/// @{
/// Each channel of each pixel black or full, by chance.
QImage noisePicture(const QSize& size);
/// Black and white areas, with a corner between them at a point.
QImage edgePicture(const QSize& size, const QPoint& corner);
QImage gradientPicture(const QSize& size);
/// @}

/// A picture that is symmetric, both from left to right and from top to bottom.
QImage symmetricPicture(const QSize& size);
