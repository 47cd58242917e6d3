// SPDX-License-Identifier: BSD-3-Clause
#include "gaussianreduction.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double ReachInSigmas = 3;

/// The Gaussian that has the variance `target` when it is sampled at whole pixels from `offset` on
/// and cut off behind `reach`.
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
    [[nodiscard]] double sampledVariance(double offset) const
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

/// The pixels along one side of the picture from which a grid's points are made.
class SourceWindows
{
public:
    SourceWindows(const GridAxis& axis, double variance, const ClampedBorder& border)
        : m_axis(axis)
        , m_reach(reductionReach(variance))
        , m_size(2 * m_reach + 2)
        , m_weights(size_t(axis.points()) * size_t(m_size))
    {
        const double offset = std::abs(std::fmod(axis.position(0), 1));
        const FittedGaussian gaussian(variance, m_reach, offset);
        for (int point = 0; 2 * point < axis.points(); ++point) {
            weigh(point, gaussian, border);
        }
    }

    /// The number of pixels for each point.
    [[nodiscard]] int size() const { return m_size; }

    /// The first pixel of a point's window.
    [[nodiscard]] int first(int point) const
    {
        const int opposite = m_axis.points() - 1 - point;
        if (point > opposite) {
            return m_axis.length() - m_size - first(opposite);
        }
        const double inside = std::abs(m_axis.position(point));
        return std::max(int(std::floor(inside)) - m_reach, 0);
    }

    [[nodiscard]] const Weight* weights(int point) const
    {
        return m_weights.data() + size_t(point) * size_t(m_size);
    }

private:
    /// Sets the weights of a point and, so that they are the same to the last bit, of its opposite
    /// in the picture's other half.
    void weigh(int point, const FittedGaussian& gaussian, const ClampedBorder& border)
    {
        std::vector<double> exact;
        double sum = 0;
        for (int pixel = first(point); pixel < first(point) + m_size; ++pixel) {
            const double position = m_axis.position(point);
            exact.push_back(
                border.mass(pixel)
                * (gaussian(border.position(pixel) - position)
                   + gaussian(border.mirrored(pixel) - position)));
            sum += exact.back();
        }
        const auto normalised = [sum](double weight) { return fixedWeight(weight / sum); };
        const auto opposite = m_weights.end() - (point + 1) * m_size;
        std::transform(exact.rbegin(), exact.rend(), opposite, normalised);
        std::transform(exact.begin(), exact.end(), m_weights.begin() + point * m_size, normalised);
    }

    const GridAxis m_axis;
    const int m_reach;
    const int m_size;
    std::vector<Weight> m_weights;
};

/// How many bytes are summed up at once, so that their sums stay in registers.
constexpr int BytesAtOnce = 32;

template <int Count>
void addRows(
    const uchar* const* rows, int offset, const SourceWindows& windows, int point, Level* sums)
{
    std::array<Level, Count> local;
    local.fill(cutLoss(windows.size()));
    const Weight* const weights = windows.weights(point);
    for (int row = 0; row < windows.size(); ++row) {
        const uchar* const bytes = rows[row] + offset;
        const Weight weight = weights[row];
        for (size_t i = 0; i < Count; ++i) {
            local[i] = Level(local[i] + weighted(Level(bytes[i] << LevelBits), weight));
        }
    }
    std::copy(local.begin(), local.end(), sums);
}

/// One row of the grid at the picture's full width.
void reduceDown(const QImage& image, const SourceWindows& windows, int point, LevelRow* row)
{
    std::vector<const uchar*> sources;
    for (int i = 0; i < windows.size(); ++i) {
        sources.push_back(image.constScanLine(windows.first(point) + i));
    }
    const int count = int(row->size());
    int offset = 0;
    for (; offset + BytesAtOnce <= count; offset += BytesAtOnce) {
        addRows<BytesAtOnce>(sources.data(), offset, windows, point, row->data() + offset);
    }
    for (; offset < count; offset += ChannelsPerPixel) {
        addRows<ChannelsPerPixel>(sources.data(), offset, windows, point, row->data() + offset);
    }
}

LevelRow reduceAcross(const LevelRow& row, const SourceWindows& windows, int points)
{
    LevelRow reducedRow(size_t(points) * ChannelsPerPixel);
    for (int point = 0; point < points; ++point) {
        const Level* levels = row.data() + windows.first(point) * ChannelsPerPixel;
        const Weight* const weights = windows.weights(point);
        std::array<Level, ChannelsPerPixel> sums;
        sums.fill(cutLoss(windows.size()));
        for (int pixel = 0; pixel < windows.size(); ++pixel) {
            for (size_t channel = 0; channel < ChannelsPerPixel; ++channel) {
                sums[channel] = Level(sums[channel] + weighted(levels[channel], weights[pixel]));
            }
            levels += ChannelsPerPixel;
        }
        std::copy(sums.begin(), sums.end(), reducedRow.begin() + point * ChannelsPerPixel);
    }
    return reducedRow;
}

} // namespace

int reductionReach(double variance)
{
    return int(std::ceil(ReachInSigmas * std::sqrt(variance)));
}

LevelGrid reduced(const QImage& image, int step, double variance, const ClampedBorder& border)
{
    LevelGrid grid = {GridAxis(image.width(), step), GridAxis(image.height(), step), {}};
    const SourceWindows across(grid.across, variance, border);
    const SourceWindows down(grid.down, variance, border);
    LevelRow fullRow(size_t(image.width()) * ChannelsPerPixel);
    for (int point = 0; point < grid.down.points(); ++point) {
        reduceDown(image, down, point, &fullRow);
        grid.rows.push_back(reduceAcross(fullRow, across, grid.across.points()));
    }
    return grid;
}
