// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme/colouranalysis.h"

#include <QColor>
#include <QImage>

/// The result of the analysis if no pixel is coloured.
const QColor Fallback(245, 193, 112);

/// Whether the analysis of a picture of one pixel gives the same hue and value as QColor. In a
/// larger picture, other pixels would hide an error.
inline bool hasHueOfQColor(QRgb rgb)
{
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(rgb);
    float average = -1;
    QColor dominant;
    analyseImageColors(pixel, &average, &dominant);

    int hue = 0;
    int saturation = 0;
    int value = 0;
    QColor(rgb).getHsv(&hue, &saturation, &value);
    if (int(average) != value) {
        return false;
    }
    const bool counts = saturation > 20 && value > 20;
    return counts ? dominant.hsvHue() == hue && dominant.hsvSaturation() == 128
                  : dominant == Fallback;
}
