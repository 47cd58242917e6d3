// SPDX-License-Identifier: BSD-3-Clause
#include "gridinterpolation.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// The number of points of the grid that a pixel is interpolated from.
constexpr int Taps = 6;
/// A pixel has as many points before it as after it. This is the number of points before the
/// nearest of those before it.
constexpr int TapsBefore = Taps / 2 - 1;
/// The Gaussian's sigma in steps of the grid. If it were smaller, the grid would be visible; if it
/// were larger, more points would be needed.
constexpr double SigmaInSteps = 0.85;

using TapWeights = std::array<double, Taps>;
using FixedTapWeights = std::array<Weight, Taps>;
using TapLevels = std::array<const Level*, Taps>;

/// The distance of a tap from a pixel that is `phase` steps after the third tap.
double tapDistance(int tap, double phase)
{
    return tap - TapsBefore - phase;
}

TapWeights tapWeights(double phase)
{
    TapWeights weights = {};
    double sum = 0;
    for (int tap = 0; tap < Taps; ++tap) {
        const double distance = tapDistance(tap, phase);
        // A pixel exactly on a point uses five taps, so that both sides are equal.
        if (std::abs(distance) < double(Taps) / 2) {
            weights[size_t(tap)] =
                std::exp(-distance * distance / (2 * SigmaInSteps * SigmaInSteps));
        }
        sum += weights[size_t(tap)];
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return weights;
}

/// The points that the pixels of one side of the picture are made from.
class TapTable
{
public:
    explicit TapTable(const GridAxis& axis)
        : m_start(-axis.position(0))
        , m_step(axis.step())
    {
        for (int pixel = 0; pixel < m_step; ++pixel) {
            const double steps = (m_start + pixel) / m_step;
            FixedTapWeights fixed = {};
            const TapWeights weights = tapWeights(steps - std::floor(steps));
            std::transform(weights.begin(), weights.end(), fixed.begin(), fixedWeight);
            m_weights.push_back(fixed);
        }
    }

    /// The index of a pixel's first point.
    int first(int pixel) const { return int(std::floor((m_start + pixel) / m_step)) - TapsBefore; }
    const FixedTapWeights& weights(int pixel) const { return m_weights[size_t(pixel % m_step)]; }

    int step() const { return m_step; }

private:
    const double m_start;
    const int m_step;
    std::vector<FixedTapWeights> m_weights;
};

Level weightedSum(const TapLevels& levels, size_t i, const FixedTapWeights& weights)
{
    Level sum = cutLoss(Taps);
    for (size_t tap = 0; tap < Taps; ++tap) {
        sum = Level(sum + weighted(levels[tap][i], weights[tap]));
    }
    return sum;
}

/// Computes the pixels of one phase: those with the same position between their points. They are
/// one step apart, and the first one is `first`.
void interpolatePhase(const LevelRow& points, const TapTable& taps, int first, LevelRow* phase)
{
    TapLevels levels = {};
    for (int tap = 0; tap < Taps; ++tap) {
        levels[size_t(tap)] = points.data() + channelsOf(taps.first(first) + tap);
    }
    const FixedTapWeights weights = taps.weights(first);
    Level* const target = phase->data();
    const size_t count = phase->size();
    for (size_t i = 0; i < count; ++i) {
        target[i] = weightedSum(levels, i, weights);
    }
}

/// Computes a row of the grid at the picture's full width, phase by phase, because all pixels of a
/// phase have the same weights.
void interpolateAcross(const LevelRow& points, const TapTable& taps, LevelRow* row)
{
    const int width = int(row->size() / ChannelsPerPixel);
    LevelRow phase;
    for (int first = 0; first < taps.step(); ++first) {
        const int pixels = (width - first + taps.step() - 1) / taps.step();
        phase.resize(channelsOf(pixels));
        interpolatePhase(points, taps, first, &phase);
        for (int i = 0; i < pixels; ++i) {
            const Level* const pixel = phase.data() + channelsOf(i);
            Level* const target = row->data() + channelsOf(first + i * taps.step());
            std::copy_n(pixel, ChannelsPerPixel, target);
        }
    }
}

void interpolateDown(
    const TapLevels& rows, const FixedTapWeights& weights, uchar* bytes, size_t count)
{
    constexpr Level half = 1 << (LevelBits - 1);
    // Writing bytes could change `rows` as far as the compiler knows; copies stay in registers.
    const TapLevels levels = rows;
    const FixedTapWeights factors = weights;
    for (size_t i = 0; i < count; ++i) {
        bytes[i] = uchar((weightedSum(levels, i, factors) + half) >> LevelBits);
    }
}

} // namespace

double interpolationVariance(int step)
{
    constexpr int phases = 64;
    double sum = 0;
    for (int i = 0; i < phases; ++i) {
        const double phase = (i + 0.5) / phases;
        const TapWeights weights = tapWeights(phase);
        for (int tap = 0; tap < Taps; ++tap) {
            sum += weights[size_t(tap)] * std::pow(tapDistance(tap, phase), 2);
        }
    }
    return sum / phases * step * step;
}

void interpolateFromGrid(const LevelGrid& grid, QImage* image)
{
    const TapTable across(grid.across);
    const TapTable down(grid.down);
    const size_t count = channelsOf(image->width());
    std::array<LevelRow, Taps> rows;
    rows.fill(LevelRow(count));
    int next = 0;
    for (int y = 0; y < image->height(); ++y) {
        const int first = down.first(y);
        for (; next < first + Taps; ++next) {
            interpolateAcross(grid.rows[size_t(next)], across, &rows[size_t(next % Taps)]);
        }
        TapLevels levels = {};
        for (int tap = 0; tap < Taps; ++tap) {
            levels[size_t(tap)] = rows[size_t((first + tap) % Taps)].data();
        }
        interpolateDown(levels, down.weights(y), image->scanLine(y), count);
    }
}
