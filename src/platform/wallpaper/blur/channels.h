// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstddef>

/// The number of channels of a pixel in QImage::Format_RGB32. The fourth is always 255.
constexpr size_t ChannelsPerPixel = 4;

/// The index of a pixel's first channel in its row.
constexpr size_t channelsOf(int pixel)
{
    return size_t(pixel) * ChannelsPerPixel;
}
