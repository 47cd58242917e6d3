// SPDX-License-Identifier: BSD-3-Clause
#include "gridreduction.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double ReachInSigmas = 3;
/// The number of rows that are added up at once. More rows need more registers than there are; with
/// fewer rows, the sums are written more often. The number is even because pixels are handled in
/// pairs.
constexpr int RowsAtOnce = 8;

/// A Gaussian, sampled at whole pixels from `offset` on and cut off beyond `reach`, whose variance
/// after this is `target`.
class FittedGaussian
{
public:
    FittedGaussian(double target, int reach, double offset)
        : m_reach(reach)
        , m_variance(target)
    {
        constexpr int rounds = 8;
        for (int round = 0; round < rounds; ++round) {
            m_variance *= target / sampledVariance(offset);
        }
    }

    double operator()(double distance) const
    {
        return std::abs(distance) > m_reach ? 0 : std::exp(-distance * distance / (2 * m_variance));
    }

private:
    double sampledVariance(double offset) const
    {
        double weights = 0;
        double moments = 0;
        for (int i = -m_reach - 1; i <= m_reach; ++i) {
            const double distance = i + offset;
            weights += (*this)(distance);
            moments += (*this)(distance)*distance * distance;
        }
        return moments / weights;
    }

    const int m_reach;
    double m_variance;
};

/// The pixels along one side of the picture that the points of a grid are made from.
class SourceWindows
{
public:
    /// Each weight is stored `copies` times.
    SourceWindows(const GridAxis& axis, double variance, const ClampedBorder& border, size_t copies)
        : m_reach(reductionReach(variance))
        , m_size((2 * m_reach + 2 + RowsAtOnce - 1) / RowsAtOnce * RowsAtOnce)
        , m_copies(copies)
        , m_first(size_t(axis.points()))
        , m_weights(m_first.size() * size_t(m_size) * copies)
    {
        const double offset = std::abs(std::fmod(axis.position(0), 1));
        const FittedGaussian gaussian(variance, m_reach, offset);
        for (int point = 0; 2 * point < axis.points(); ++point) {
            const double position = axis.position(point);
            const int first = std::max(int(std::floor(std::abs(position))) - m_reach, 0);
            const int opposite = axis.points() - 1 - point;
            // The weights are exactly symmetric, bit by bit. The point in the middle is opposite to
            // itself; the second assignment is the one that counts.
            const std::vector<double> weights = exactWeights(first, position, gaussian, border);
            setWindow(opposite, axis.length() - m_size - first, {weights.rbegin(), weights.rend()});
            setWindow(point, first, weights);
        }
    }

    /// The number of points.
    int count() const { return int(m_first.size()); }
    /// The number of pixels for each point.
    int size() const { return m_size; }
    /// The first pixel of a point's window.
    int first(int point) const { return m_first[size_t(point)]; }
    const Weight* weights(int point) const { return m_weights.data() + offset(point); }

private:
    size_t offset(int point) const { return size_t(point) * size_t(m_size) * m_copies; }

    std::vector<double> exactWeights(
        int first, double position, const FittedGaussian& gaussian,
        const ClampedBorder& border) const
    {
        std::vector<double> weights;
        double sum = 0;
        for (int pixel = first; pixel < first + m_size; ++pixel) {
            weights.push_back(
                border.mass(pixel)
                * (gaussian(border.position(pixel) - position)
                   + gaussian(border.mirrored(pixel) - position)));
            sum += weights.back();
        }
        for (double& weight : weights) {
            weight /= sum;
        }
        return weights;
    }

    void setWindow(int point, int first, const std::vector<double>& weights)
    {
        m_first[size_t(point)] = first;
        auto target = m_weights.begin() + std::ptrdiff_t(offset(point));
        for (const double weight : weights) {
            target = std::fill_n(target, m_copies, fixedWeight(weight));
        }
    }

    const int m_reach;
    const int m_size;
    const size_t m_copies;
    std::vector<int> m_first;
    std::vector<Weight> m_weights;
};

using RowGroup = std::array<const uchar*, RowsAtOnce>;

void addRows(const RowGroup& rows, const Weight* weights, LevelRow* sums)
{
    Level* const target = sums->data();
    const size_t count = sums->size();
    for (size_t i = 0; i < count; ++i) {
        Level sum = target[i];
        for (size_t row = 0; row < RowsAtOnce; ++row) {
            sum = Level(sum + weighted(Level(rows[row][i] << LevelBits), weights[row]));
        }
        target[i] = sum;
    }
}

/// Computes one row of the grid at the picture's full width.
void reduceDown(const QImage& image, const SourceWindows& windows, int point, LevelRow* row)
{
    std::fill(row->begin(), row->end(), cutLoss(windows.size()));
    for (int i = 0; i < windows.size(); i += RowsAtOnce) {
        RowGroup rows = {};
        for (int k = 0; k < RowsAtOnce; ++k) {
            rows[size_t(k)] = image.constScanLine(windows.first(point) + i + k);
        }
        addRows(rows, windows.weights(point) + i, row);
    }
}

/// Computes one point from the levels of its window and their weights.
void addPixels(const Level* levels, const Weight* weights, int pixels, Level* point)
{
    // Two pixels fill a register.
    constexpr size_t atOnce = 2 * ChannelsPerPixel;
    std::array<Level, atOnce> sums = {};
    const size_t count = channelsOf(pixels);
    for (size_t i = 0; i < count; i += atOnce) {
        for (size_t k = 0; k < atOnce; ++k) {
            sums[k] = Level(sums[k] + weighted(levels[i + k], weights[i + k]));
        }
    }
    for (size_t channel = 0; channel < ChannelsPerPixel; ++channel) {
        point[channel] = Level(sums[channel] + sums[channel + ChannelsPerPixel] + cutLoss(pixels));
    }
}

LevelRow reduceAcross(const LevelRow& row, const SourceWindows& windows)
{
    LevelRow result(channelsOf(windows.count()));
    for (int point = 0; point < windows.count(); ++point) {
        addPixels(
            row.data() + channelsOf(windows.first(point)), windows.weights(point), windows.size(),
            result.data() + channelsOf(point));
    }
    return result;
}

} // namespace

int reductionReach(double variance)
{
    return int(std::ceil(ReachInSigmas * std::sqrt(variance)));
}

LevelGrid reduceToGrid(const QImage& image, int step, double variance, const ClampedBorder& border)
{
    LevelGrid grid = {GridAxis(image.width(), step), GridAxis(image.height(), step), {}};
    const SourceWindows across(grid.across, variance, border, ChannelsPerPixel);
    const SourceWindows down(grid.down, variance, border, 1);
    LevelRow row(channelsOf(image.width()));
    for (int point = 0; point < down.count(); ++point) {
        reduceDown(image, down, point, &row);
        grid.rows.push_back(reduceAcross(row, across));
    }
    return grid;
}
