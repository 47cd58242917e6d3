// SPDX-License-Identifier: BSD-3-Clause
#include "composedpasses.h"

#include "gridaxis.h"
#include "matrix.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace {

/// A pixel that is farther away than this, in sigmas of the whole blur, has no visible weight.
constexpr int ReachInSigmas = 4;
/// The passes are computed at about this many points at most: the time grows with the cube of their
/// number.
constexpr int MostPassPoints = 128;
/// The largest distance between these points, in sigmas of one pass. With a larger distance, they
/// would miss details that a pass leaves.
constexpr double WidestPassStep = 1;
/// The weights that are left out at each end of a window have a smaller sum than this.
constexpr double NegligibleSum = 1e-4;

int oddAtMost(double value)
{
    const int whole = std::max(1, int(value));
    return whole % 2 == 1 ? whole : whole - 1;
}

int oddAtLeast(double value)
{
    return oddAtMost(std::ceil(value) + 1);
}

/// The largest distance between points that allows interpolating the result of all passes, in
/// pixels.
double widestStep(const HalfKernel& kernel, int rounds, double sigma)
{
    // A kernel that ends abruptly, as a box does, gives an edge sharp corners, which interpolation
    // would round. With more passes, the corners are round anyway.
    constexpr double afterOnePass = 0.012;
    constexpr double afterTwoPasses = 0.1;
    const double end = kernel.back();
    switch (rounds) {
    case 1:
        return std::min(sigma / 2, afterOnePass / end);
    case 2:
        return std::min(sigma / 2, afterTwoPasses / end);
    }
    return sigma / 2;
}

/// The points of a line at which the passes are computed.
struct Plan
{
    /// The distance between the points at which each pass is computed, and the distance between
    /// those of them at which the result of all passes is needed, in pixels. Both are odd, so that
    /// all points lie on pixels; see pointsOn().
    int passStep;
    int resultStep;
    /// The length of a line that is just long enough: its ends do not influence its middle. In a
    /// longer line, all further pixels are like those in the middle.
    int shortLength;
};

Plan planFor(int length, const HalfKernel& kernel, int rounds)
{
    // A line that is short compared with the blur must have some points, too.
    constexpr double fewestSteps = 8;
    const double passSigma = std::sqrt(variance(kernel));
    const double sigma = passSigma * std::sqrt(rounds);
    const double widest = std::min(widestStep(kernel, rounds, sigma), length / fewestSteps);
    const int needed = std::min(length, 2 * int(std::ceil(ReachInSigmas * sigma)) + 1);
    // A single pass is computed at the points of the result.
    const int passStep = rounds == 1
        ? 1
        : std::min(
            oddAtLeast(double(needed) / MostPassPoints), oddAtMost(WidestPassStep * passSigma));
    const int resultStep = passStep * oddAtMost(widest / passStep);
    // A shorter line has the same points at both ends.
    const int left = (length - needed) / (2 * resultStep) * 2 * resultStep;
    return {passStep, resultStep, length - left};
}

/// Points on a line. Some are beyond each end, so that each pixel has two points on either side.
/// They lie on pixels, because their number is odd if the number of pixels is odd, and the step is
/// odd.
GridAxis pointsOn(int length, int step)
{
    const int points = (length - 1) / step + 4;
    return {length, step, points + (points + length) % 2};
}

/// The points of `axis` and, between them, further points at a distance of `step` pixels.
GridAxis refined(const GridAxis& axis, int step)
{
    return {axis.length(), step, (axis.points() - 1) * (axis.step() / step) + 1};
}

/// The weights of the pixels in the result of one pass. The result at a point is the mean of the
/// results at the `width` pixels around it.
Matrix passWeights(const GridAxis& axis, const HalfKernel& kernel, int width)
{
    Matrix weights(axis.points(), axis.length());
    const int radius = int(kernel.size()) - 1;
    for (int point = 0; point < axis.points(); ++point) {
        const int first = int(axis.position(point)) - width / 2;
        for (int position = first; position < first + width; ++position) {
            for (int offset = -radius; offset <= radius; ++offset) {
                const int pixel = std::clamp(position + offset, 0, axis.length() - 1);
                weights.row(point)[pixel] += kernel[size_t(std::abs(offset))] / width;
            }
        }
    }
    return weights;
}

/// The weights of the cubic through four points, for a position `offset` pixels after the second
/// point.
std::array<double, LineFilter::Taps> cubicWeights(int offset, int step)
{
    const double left = offset;
    const double right = step - offset;
    const double cube = 6.0 * step * step * step;
    return {
        -left * right * (right + step) / cube, 3 * (left + step) * right * (right + step) / cube,
        3 * (left + step) * left * (right + step) / cube, -(left + step) * left * right / cube};
}

struct Taps
{
    int first;
    std::array<double, LineFilter::Taps> weights;
};

Taps tapsOf(int pixel, const GridAxis& axis)
{
    const int distance = pixel - int(axis.position(0));
    return {distance / axis.step() - 1, cubicWeights(distance % axis.step(), axis.step())};
}

/// Converts `weights` of pixels to weights of the points that the pixels are interpolated from.
Matrix onPoints(const Matrix& weights, const GridAxis& axis)
{
    Matrix result(weights.rows(), axis.points());
    for (int pixel = 0; pixel < axis.length(); ++pixel) {
        const Taps taps = tapsOf(pixel, axis);
        for (int row = 0; row < weights.rows(); ++row) {
            for (int tap = 0; tap < LineFilter::Taps; ++tap) {
                result.row(row)[taps.first + tap] +=
                    weights.row(row)[pixel] * taps.weights[size_t(tap)];
            }
        }
    }
    return result;
}

/// A matrix that selects the values at the points of `chosen` from those at the points of `all`.
Matrix choice(const GridAxis& chosen, const GridAxis& all)
{
    Matrix result(chosen.points(), all.points());
    const int times = chosen.step() / all.step();
    for (int point = 0, place = 0; point < chosen.points(); ++point, place += times) {
        result.row(point)[place] = 1;
    }
    return result;
}

/// The weights of the pixels in the result of all passes at the points of `axis`.
Matrix composedWeights(const GridAxis& axis, const HalfKernel& kernel, int rounds, int passStep)
{
    if (rounds == 1) {
        return passWeights(axis, kernel, 1);
    }
    const GridAxis fine = refined(axis, passStep);
    const Matrix pass = onPoints(passWeights(fine, kernel, 1), fine);
    // The picture has fine details, so the first pass uses means; single points would miss details.
    const Matrix firstPass = passWeights(fine, kernel, passStep);
    return timesPower(choice(axis, fine), pass, rounds - 1) * firstPass;
}

/// The window of the weights that are not negligible.
LineFilter::Window trimmed(const std::vector<double>& weights)
{
    const auto counting = [](auto from, auto to) {
        double sum = 0;
        return std::find_if(from, to, [&sum](double weight) {
            sum += std::abs(weight);
            return sum > NegligibleSum;
        });
    };
    const auto begin = counting(weights.begin(), weights.end());
    const auto end = counting(weights.rbegin(), weights.rend()).base();
    const double sum = std::accumulate(begin, end, 0.0);
    LineFilter::Window window = {int(begin - weights.begin()), {}};
    std::transform(begin, end, std::back_inserter(window.weights), [sum](double weight) {
        return float(weight / sum);
    });
    return window;
}

LineFilter::Window mirrored(const LineFilter::Window& window, int length)
{
    return {
        length - window.first - int(window.weights.size()),
        {window.weights.rbegin(), window.weights.rend()}};
}

/// The window of a point of the short line. The window of its middle is exactly symmetric, bit by
/// bit.
LineFilter::Window windowOf(const Matrix& weights, int point)
{
    std::vector<double> row(weights.row(point), weights.row(point) + weights.columns());
    if (2 * point + 1 == weights.rows()) {
        const std::vector<double> reversed(row.rbegin(), row.rend());
        std::transform(
            row.begin(), row.end(), reversed.begin(), row.begin(),
            [](double a, double b) { return (a + b) / 2; });
    }
    return trimmed(row);
}

} // namespace

LineFilter composePasses(int length, const HalfKernel& kernel, int rounds)
{
    const Plan plan = planFor(length, kernel, rounds);
    const GridAxis axis = pointsOn(length, plan.resultStep);
    const GridAxis shortAxis = pointsOn(plan.shortLength, plan.resultStep);
    const Matrix weights = composedWeights(shortAxis, kernel, rounds, plan.passStep);

    LineFilter filter;
    filter.points.resize(size_t(axis.points()));
    for (int point = 0; 2 * point < axis.points(); ++point) {
        const int shortPoint = std::min(point, (shortAxis.points() - 1) / 2);
        LineFilter::Window window = windowOf(weights, shortPoint);
        window.first += (point - shortPoint) * plan.resultStep;
        filter.points[size_t(axis.points() - 1 - point)] = mirrored(window, length);
        filter.points[size_t(point)] = std::move(window);
    }
    for (int pixel = 0; pixel < length; ++pixel) {
        const Taps taps = tapsOf(pixel, axis);
        LineFilter::PixelTaps fixed = {taps.first, {}};
        std::transform(
            taps.weights.begin(), taps.weights.end(), fixed.weights.begin(),
            [](double weight) { return float(weight); });
        filter.pixels.push_back(fixed);
    }
    return filter;
}
