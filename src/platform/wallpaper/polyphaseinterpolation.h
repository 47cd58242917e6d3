// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "levelgrid.h"

class QImage;

/// The variance, in square pixels, that interpolation adds to a grid's.
double interpolationVariance(int step);

/// Fills an image of QImage::Format_RGB32 with what lies between the points of a grid of its size.
void interpolate(const LevelGrid& grid, QImage* image);
