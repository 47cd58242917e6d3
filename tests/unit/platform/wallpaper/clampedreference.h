// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "blur/wallpaperblur.h"

#include <QImage>

/// The difference between a blurred picture and the exact result of its passes, in levels of a
/// channel.
struct BlurError
{
    /// The largest difference at more than three sigma of the whole blur from the border.
    double largestInside = 0;
    double largest = 0;
    double mean = 0;
};

/// Runs the passes over `picture` by their definition, in double precision, and compares.
BlurError blurError(const QImage& picture, const QImage& blurred, const BlurPasses& passes);
