// SPDX-License-Identifier: BSD-3-Clause
#include "wallpaperblur.h"

#include "clampedpasses.h"

#include <QImage>

void blurWallpaper(QImage* image, const BlurPasses& passes)
{
    if (image->isNull() || passes.rounds == 0 || passes.radius == 0 || passes.sigma <= 0) {
        return;
    }
    runClampedPasses(image, gaussianKernel(passes.radius, passes.sigma), passes.rounds);
}
