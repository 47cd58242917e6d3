// SPDX-License-Identifier: BSD-3-Clause
#include "wallpaperblur.h"

#include "composedpasses.h"
#include "gridinterpolation.h"
#include "gridreduction.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace {

/// With fewer passes, the result near an edge is not close to a Gaussian.
constexpr int FewestRounds = 8;
/// The blur's sigma in steps of the grid. A wider grid would be visible; a finer one takes longer.
constexpr double SigmaInSteps = 1.21;
/// A reduction that reaches farther, in pixels, adds so many rounded 16-bit numbers that the result
/// is a level too low.
constexpr int FarthestReach = 96;

/// How to blur an image with a grid.
struct GridPlan
{
    /// The distance between the grid's points, in pixels.
    int step;
    /// The part of the blur's variance that comes from the reduction. The rest comes from
    /// interpolation.
    double reductionVariance;
};

GridPlan gridPlan(const HalfKernel& kernel, int rounds)
{
    const double variances = rounds * variance(kernel);
    const int step = int(std::sqrt(variances) / SigmaInSteps);
    return {step, variances - interpolationVariance(step)};
}

/// Whether the passes are close to a Gaussian, and the image is large enough for the grid.
bool isForGrid(const QImage& image, int rounds, const GridPlan& plan)
{
    const int shorterSide = std::min(image.width(), image.height());
    const int reach = reductionReach(plan.reductionVariance);
    return rounds >= FewestRounds && plan.step >= 2 && reach <= FarthestReach
        && shorterSide >= 4 * reach;
}

void blurOnGrid(QImage* image, const HalfKernel& kernel, const GridPlan& plan)
{
    const ClampedBorder border = clampedBorder(kernel);
    const LevelGrid grid = reduceToGrid(*image, plan.step, plan.reductionVariance, border);
    interpolateFromGrid(grid, image);
}

void blurByComposedPasses(QImage* image, const HalfKernel& kernel, int rounds)
{
    const LineFilter filter = composePasses(image->width(), kernel, rounds);
    filterRows(image, filter);
    const bool isSquare = image->width() == image->height();
    filterColumns(image, isSquare ? filter : composePasses(image->height(), kernel, rounds));
}

} // namespace

void blurWallpaper(QImage* image, const BlurPasses& passes)
{
    if (image->isNull() || passes.rounds == 0 || passes.radius == 0 || passes.sigma <= 0) {
        return;
    }
    const HalfKernel kernel = gaussianKernel(passes.radius, passes.sigma);
    if (kernel.size() == 1) {
        return; // The blur is so narrow that no pixel changes.
    }
    const GridPlan plan = gridPlan(kernel, passes.rounds);
    if (isForGrid(*image, passes.rounds, plan)) {
        blurOnGrid(image, kernel, plan);
    } else {
        blurByComposedPasses(image, kernel, passes.rounds);
    }
}
