// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gaussiankernel.h"

/// The effect of many passes that clamp on the pixels near a border. These numbers do not depend on
/// the number of passes; docs/wallpaper-blur.md explains why.
///
/// A pass that clamps gives the border's pixel the weight of all pixels beyond the border. So some
/// pixels have more influence on the result than others. Their masses tell how much: each pass
/// preserves the sum of all values times the masses. Together, the passes act like a blur of a
/// longer line with a mirror at its end. The line is longer by the excess of the masses.
struct ClampedBorder
{
    /// The masses of the first pixels. All pixels after these have the mass 1.
    std::vector<double> masses;
    /// The difference between the sum of the masses and the number of the pixels.
    double excess;

    double mass(int pixel) const;
    /// The position of the pixel's mass, in pixels from the first one.
    double position(int pixel) const;
    /// The position of the mass's mirror image, in pixels from the first one.
    double mirrored(int pixel) const;
};

/// The border for passes of `kernel`. The time grows with the square of the kernel's size.
ClampedBorder clampedBorder(const HalfKernel& kernel);
