// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gaussiankernel.h"
#include "linefilter.h"

/// Combines `rounds` passes of `kernel` along a line of `length` pixels into one filter. Beyond an
/// end of the line, each pass uses the value of the last pixel. `rounds` must be at least 1.
///
/// The filter needs at most about 90 products for each pixel, and usually half of that, whatever
/// the rounds and the kernel are. Computing the weights takes time that grows with the logarithm of
/// the rounds, at most some milliseconds.
LineFilter composePasses(int length, const HalfKernel& kernel, int rounds);
