// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "levelgrid.h"

class QImage;

/// The variance, in square pixels, that interpolation adds to that of the grid.
double interpolationVariance(int step);

/// Computes all pixels of an image of QImage::Format_RGB32 from a grid for its size.
void interpolateFromGrid(const LevelGrid& grid, QImage* image);
