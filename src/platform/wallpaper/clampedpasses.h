// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gaussiankernel.h"

class QImage;

/// Filters an image of QImage::Format_RGB32 in place, `rounds` times with `kernel` across and then
/// as often down. Beyond an edge each pass sees the edge's pixel. The time grows with the rounds
/// and with the kernel.
void runClampedPasses(QImage* image, const HalfKernel& kernel, int rounds);
