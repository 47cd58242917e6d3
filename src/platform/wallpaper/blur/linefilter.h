// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <array>
#include <cstddef>
#include <vector>

class QImage;

/// A linear filter along a line of pixels. It computes values at points that are some pixels apart,
/// and interpolates the pixels from these values.
struct LineFilter
{
    /// The number of points that a pixel is interpolated from.
    static constexpr int Taps = 4;

    /// The weights of the pixels in a point's value; the first one is for the pixel `first`.
    struct Window
    {
        int first;
        std::vector<float> weights;
    };

    /// The weights of the points in a pixel's value; the first one is for the point `first`.
    struct PixelTaps
    {
        int first;
        std::array<float, Taps> weights;
    };

    std::vector<Window> points;
    std::vector<PixelTaps> pixels;

    /// The number of multiplications for one line.
    size_t products() const;
};

/// Filters each row, or each column, of an image of QImage::Format_RGB32 in place. The filter must
/// be made for lines of this length.
/// @{
void filterRows(QImage* image, const LineFilter& filter);
void filterColumns(QImage* image, const LineFilter& filter);
/// @}
