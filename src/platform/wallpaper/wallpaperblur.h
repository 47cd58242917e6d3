// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QImage;

/// A blur, as passes of a Gaussian that is cut off behind `radius`, both in pixels.
struct BlurPasses
{
    int rounds;
    int radius;
    double sigma;
};

/// Blurs an image of QImage::Format_RGB32 in place. Each pass sees the edge's pixel beyond an edge.
void blurWallpaper(QImage* image, const BlurPasses& passes);
