// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QImage;

/// The parameters of a blur: passes of a Gaussian that is cut off beyond `radius`. Lengths are in
/// pixels.
struct BlurPasses
{
    int rounds;
    int radius;
    double sigma;
};

/// Blurs an image of QImage::Format_RGB32 in place. Beyond an edge, each pass uses the value of the
/// edge's pixel.
///
/// The passes are not run one by one. Whatever the parameters and the size of the image are, the
/// number of multiplications for each pixel is limited, and many rounds take no longer than a few.
/// The result differs from that of the passes by at most about one and a half levels.
void blurWallpaper(QImage* image, const BlurPasses& passes);
