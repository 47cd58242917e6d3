// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "clampedborder.h"
#include "levelgrid.h"

class QImage;

/// The distance in pixels between a point of the grid and the farthest pixel that it is made from.
int reductionReach(double variance);

/// Blurs an image of QImage::Format_RGB32 with a Gaussian of `variance` square pixels, and computes
/// the result only at the points of a grid, `step` pixels apart. Each side of the image must be at
/// least four times as long as reductionReach().
LevelGrid reduceToGrid(const QImage& image, int step, double variance, const ClampedBorder& border);
