// SPDX-License-Identifier: BSD-3-Clause
#include "wallpaperblur.h"

#include "clampedpasses.h"
#include "gaussianreduction.h"
#include "polyphaseinterpolation.h"

#include <QImage>

#include <cmath>

namespace {

/// Fewer passes are no Gaussian yet near an edge.
constexpr int FewestRounds = 8;
/// The blur's sigma in steps of the grid. A wider grid shows, a finer one takes longer.
constexpr double SigmaInSteps = 1.21;

} // namespace

void blurWallpaper(QImage* image, const BlurPasses& passes)
{
    if (image->isNull() || passes.rounds == 0 || passes.radius == 0 || passes.sigma <= 0) {
        return;
    }
    const HalfKernel kernel = gaussianKernel(passes.radius, passes.sigma);
    if (kernel.size() == 1) {
        return;
    }
    const double total = passes.rounds * variance(kernel);
    const int step = int(std::sqrt(total) / SigmaInSteps);
    const double reduction = total - interpolationVariance(step);
    const int shorterSide = std::min(image->width(), image->height());
    if (passes.rounds < FewestRounds || step < 2 || shorterSide < 4 * reductionReach(reduction)) {
        runClampedPasses(image, kernel, passes.rounds);
    } else {
        interpolate(reduced(*image, step, reduction, clampedBorder(kernel)), image);
    }
}
