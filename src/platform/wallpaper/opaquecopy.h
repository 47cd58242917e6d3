// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QImage;
class QRect;

/// A copy, in QImage::Format_RGB32, of the part `part` of an image of any format, over black where
/// the image is transparent. `part` must lie inside the image. Null if the image is, or if there is
/// no memory for it.
QImage opaqueCopy(const QImage& image, const QRect& part);
