// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QSize>

class VelmoorZerlinBackground;

/// The parameters of the blur; see VelmoorZerlinBackground.
struct BlurParameters
{
    float pixelRatio;
    int rounds;
    int radius;
    double sigma;
};

/// The parameters in the key/value store, for a screen of `size` pixels.
BlurParameters blurParameters(const QSize& size);

/// Sets the parameters of a build.
void setBlurParameters(VelmoorZerlinBackground* background, const BlurParameters& parameters);

/// The secondary highlight colour for a moodset that gives none.
QColor secondaryHighlightFrom(const QColor& highlight);

/// The primary and the secondary colour for a moodset that gives none.
/// @{
QColor usualPrimaryColor();
QColor usualSecondaryColor();
/// @}
