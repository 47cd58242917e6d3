// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <cmath>
#include <vector>

/// A channel of a pixel in 256ths of its 255 levels.
using Level = quint16;
/// A weight of a filter in 65536ths, below 1.
using Weight = quint16;

constexpr size_t ChannelsPerPixel = 4;
constexpr int LevelBits = 8;
constexpr int WeightBits = 16;

/// Cuts the product, so that it is half of a 256th too small on average; see cutLoss(). Compilers
/// have one instruction for eight of these.
constexpr Level weighted(Level level, Weight weight)
{
    return Level(quint32(level) * weight >> WeightBits);
}

/// What a sum of `terms` weighted levels lacks on average.
constexpr Level cutLoss(int terms)
{
    return Level(terms / 2);
}

inline Weight fixedWeight(double weight)
{
    return Weight(std::lround(weight * (1 << WeightBits)));
}

/// A row of pixels, channel by channel.
using LevelRow = std::vector<Level>;

/// Where a pixel's channels begin in its row.
constexpr size_t channelsOf(int pixel)
{
    return size_t(pixel) * ChannelsPerPixel;
}
