// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gaussiankernel.h"

/// What many passes that clamp at a border look like from far away: the pixels near the border
/// count more or less than one pixel, and the line is mirrored a little beyond its end.
///
/// A pass that clamps hands the border's pixel all the weight that falls off, and so some pixels
/// give more to their neighbours than they get back. The masses are those that a pass keeps: their
/// product with the values, added up, stays the same. Many passes then spread this sum as a
/// Gaussian does that is thrown back where the masses end.
struct ClampedBorder
{
    /// Of the first pixels, where they are not 1.
    std::vector<double> masses;
    /// What the masses add up to more than the pixels' number; half of it lies before pixel 0.
    double excess;

    [[nodiscard]] double mass(int pixel) const;
    /// Where the pixel's mass lies, in pixels from the first one.
    [[nodiscard]] double position(int pixel) const;
    /// Where that is seen in the mirror.
    [[nodiscard]] double mirrored(int pixel) const;
};

/// The border of passes of `kernel`.
ClampedBorder clampedBorder(const HalfKernel& kernel);
