// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QColor;
class QImage;

/// Finds the hue that dominates an image, as QColor::getHsv() sees its pixels.
///
/// `averageValue` becomes the mean HSV value of all pixels, rounded down. It does not change if the
/// image has no pixels. `dominantColor` becomes a colour of the hue with the greatest weight, with
/// the saturation 128 and the value 255. A pixel counts if its saturation and its value are above
/// 20 each; its weight is its value shifted right by 4 bits, so bright pixels weigh more. Of hues
/// with equal weight, the lowest wins. If no pixel counts, the colour is an orange.
void analyseImageColors(const QImage& image, float* averageValue, QColor* dominantColor);

/// The highlight colour for a dominant colour: the same colour, or a paler one if that could not be
/// read on black.
QColor highlightFromDominant(const QColor& dominant);
