// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "clampedborder.h"
#include "levelgrid.h"

class QImage;

/// How far a reduction to `variance` looks, in pixels from a point of the grid.
int reductionReach(double variance);

/// Blurs an image of QImage::Format_RGB32 with a Gaussian of `variance` square pixels and keeps
/// every `step`-th pixel of the result, without computing the others. Each side of the image must
/// be at least four times as long as reductionReach().
LevelGrid reduced(const QImage& image, int step, double variance, const ClampedBorder& border);
