// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QImage;
class QRect;

/// A copy of the part `part` of an image of any format, in QImage::Format_RGB32 and with the same
/// colour space. Transparent areas become black. `part` must lie inside the image. Null if the
/// image is null or there is not enough memory.
QImage opaqueCopy(const QImage& image, const QRect& part);
