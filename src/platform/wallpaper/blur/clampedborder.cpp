// SPDX-License-Identifier: BSD-3-Clause
#include "clampedborder.h"

#include <cmath>
#include <cstdlib>
#include <numeric>

namespace {

/// Pixels that are farther from the border than this, in radii of the kernel, have the mass 1.
constexpr int ReachInRadii = 3;
/// The search for the masses ends when a pass changes none of them by more than this.
constexpr double Tolerance = 1e-7;

/// Computes the masses before a pass from the `masses` after it. In a pass, each pixel gives its
/// mass, in parts, to the pixels that it is made from.
std::vector<double> massesBefore(const std::vector<double>& masses, const HalfKernel& kernel)
{
    const int radius = int(kernel.size()) - 1;
    const int count = int(masses.size());
    std::vector<double> result(masses.size());
    for (int to = 0; to < count + radius; ++to) {
        const double mass = to < count ? masses[size_t(to)] : 1;
        for (int from = to - radius; from <= to + radius; ++from) {
            const int pixel = std::max(from, 0);
            if (pixel < count) {
                result[size_t(pixel)] += mass * kernel[size_t(std::abs(from - to))];
            }
        }
    }
    return result;
}

double largestDifference(const std::vector<double>& a, const std::vector<double>& b)
{
    const auto larger = [](double x, double y) { return std::max(x, y); };
    const auto difference = [](double x, double y) { return std::abs(x - y); };
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0, larger, difference);
}

} // namespace

double ClampedBorder::mass(int pixel) const
{
    return size_t(pixel) < masses.size() ? masses[size_t(pixel)] : 1;
}

double ClampedBorder::position(int pixel) const
{
    return pixel == 0 ? -excess / 2 : pixel;
}

double ClampedBorder::mirrored(int pixel) const
{
    return -1 - 2 * excess - position(pixel);
}

ClampedBorder clampedBorder(const HalfKernel& kernel)
{
    std::vector<double> masses(ReachInRadii * kernel.size(), 1);
    double change = 1;
    while (change > Tolerance) {
        std::vector<double> next = massesBefore(masses, kernel);
        change = largestDifference(masses, next);
        masses.swap(next);
    }
    const double total = std::accumulate(masses.begin(), masses.end(), 0.0);
    return {masses, total - double(masses.size())};
}
