// SPDX-License-Identifier: BSD-3-Clause
#include "linefilter.h"

#include "channels.h"

#include <QImage>

#include <algorithm>
#include <numeric>

namespace {

/// The number of lines that are filtered side by side. The sums of one step fill the registers, and
/// memory is read in long runs.
constexpr int LinesAtOnce = 8;
constexpr size_t Lanes = size_t(LinesAtOnce) * ChannelsPerPixel;

using LaneSums = std::array<float, Lanes>;

/// The channels of the pixels of some lines: those at the first position in all lines, then those
/// at the second, and so on.
class Strip
{
public:
    explicit Strip(size_t positions)
        : m_values(positions * Lanes)
    {
    }

    float* at(int position) { return m_values.data() + size_t(position) * Lanes; }
    const float* at(int position) const { return m_values.data() + size_t(position) * Lanes; }

private:
    std::vector<float> m_values;
};

/// The sum of `count` values times their weights. It starts at a position and a weight, and goes
/// forwards or backwards.
LaneSums weightedSum(const Strip& strip, int position, const float* weight, int count, int way)
{
    LaneSums sums = {};
    for (; count > 0; --count) {
        const float* const values = strip.at(position);
        for (size_t lane = 0; lane < Lanes; ++lane) {
            sums[lane] += *weight * values[lane];
        }
        position += way;
        weight += way;
    }
    return sums;
}

/// Computes the values of a point. The sum is made from both ends of the window, so that mirrored
/// lines give exactly mirrored results.
void filterPoint(const Strip& pixels, const LineFilter::Window& window, float* point)
{
    const int size = int(window.weights.size());
    const int half = size / 2;
    const float* const weights = window.weights.data();
    const LaneSums before = weightedSum(pixels, window.first, weights, half, 1);
    const LaneSums after =
        weightedSum(pixels, window.first + size - 1, weights + size - 1, half, -1);
    const LaneSums middle =
        weightedSum(pixels, window.first + half, weights + half, size - 2 * half, 1);
    for (size_t lane = 0; lane < Lanes; ++lane) {
        point[lane] = before[lane] + after[lane] + middle[lane];
    }
}

void interpolatePixel(const Strip& points, const LineFilter::PixelTaps& taps, float* pixel)
{
    const float* const values = points.at(taps.first);
    const std::array<float, LineFilter::Taps> weights = taps.weights;
    for (size_t lane = 0; lane < Lanes; ++lane) {
        const float outer = weights[0] * values[lane] + weights[3] * values[lane + 3 * Lanes];
        const float inner =
            weights[1] * values[lane + Lanes] + weights[2] * values[lane + 2 * Lanes];
        pixel[lane] = outer + inner;
    }
}

void filterStrip(const LineFilter& filter, Strip* pixels, Strip* points)
{
    for (size_t point = 0; point < filter.points.size(); ++point) {
        filterPoint(*pixels, filter.points[point], points->at(int(point)));
    }
    for (size_t pixel = 0; pixel < filter.pixels.size(); ++pixel) {
        interpolatePixel(*points, filter.pixels[pixel], pixels->at(int(pixel)));
    }
}

void load(const uchar* bytes, size_t count, float* values)
{
    std::transform(bytes, bytes + count, values, [](uchar byte) { return float(byte); });
}

void store(const float* values, size_t count, uchar* bytes)
{
    std::transform(values, values + count, bytes, [](float value) {
        const float raised = std::clamp(value, 0.0F, 255.0F) + 0.5F;
        return uchar(raised);
    });
}

} // namespace

size_t LineFilter::products() const
{
    const auto add = [](size_t sum, const Window& window) { return sum + window.weights.size(); };
    return std::accumulate(points.begin(), points.end(), pixels.size() * Taps, add);
}

void filterRows(QImage* image, const LineFilter& filter)
{
    Strip pixels(filter.pixels.size());
    Strip points(filter.points.size());
    for (int first = 0; first < image->height(); first += LinesAtOnce) {
        const int rows = std::min(LinesAtOnce, image->height() - first);
        for (int row = 0; row < rows; ++row) {
            const uchar* const bytes = image->constScanLine(first + row);
            for (int x = 0; x < image->width(); ++x) {
                load(bytes + channelsOf(x), ChannelsPerPixel, pixels.at(x) + channelsOf(row));
            }
        }
        filterStrip(filter, &pixels, &points);
        for (int row = 0; row < rows; ++row) {
            uchar* const bytes = image->scanLine(first + row);
            for (int x = 0; x < image->width(); ++x) {
                store(pixels.at(x) + channelsOf(row), ChannelsPerPixel, bytes + channelsOf(x));
            }
        }
    }
}

void filterColumns(QImage* image, const LineFilter& filter)
{
    Strip pixels(filter.pixels.size());
    Strip points(filter.points.size());
    for (int first = 0; first < image->width(); first += LinesAtOnce) {
        const size_t bytes = channelsOf(std::min(LinesAtOnce, image->width() - first));
        for (int y = 0; y < image->height(); ++y) {
            load(image->constScanLine(y) + channelsOf(first), bytes, pixels.at(y));
        }
        filterStrip(filter, &pixels, &points);
        for (int y = 0; y < image->height(); ++y) {
            store(pixels.at(y), bytes, image->scanLine(y) + channelsOf(first));
        }
    }
}
