// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "channels.h"

#include <QtGlobal>

#include <cmath>
#include <vector>

/// A channel of a pixel, in units of 1/256 of its 255 levels.
using Level = quint16;
/// A weight of a filter, in units of 1/65536, below 1.
using Weight = quint16;

constexpr int LevelBits = 8;
constexpr int WeightBits = 16;

/// Rounds the product down, so it is too small by half a unit on average; see cutLoss(). Compilers
/// have one instruction for eight of these.
constexpr Level weighted(Level level, Weight weight)
{
    return Level(quint32(level) * weight >> WeightBits);
}

/// How much a sum of `terms` weighted levels is too small on average.
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
