// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QColor;
class QImage;

/// Finds the hue that dominates an image, as QColor::getHsv() sees its pixels.
///
/// `averageValue` becomes the mean HSV value of all pixels, cut to a whole number; it stays as it
/// is for an image without pixels. `dominantColor` becomes the colour of saturation 128 and value
/// 255 in the hue that has most weight. A pixel has weight if its saturation and its value are
/// above 20 each, the more the brighter it is: its value shifted right by 4 bits. Of hues of equal
/// weight the lowest wins. An image without such a pixel gets an orange.
void analyseImageColors(const QImage& image, float* averageValue, QColor* dominantColor);

/// The highlight colour for a dominant colour: itself, or a paler one where it could not be read on
/// black.
QColor highlightFromDominant(const QColor& dominant);
