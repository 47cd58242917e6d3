// SPDX-License-Identifier: BSD-3-Clause
#include "gaussiankernel.h"

#include <cmath>

namespace {

/// A weight that is smaller than this part of the largest one changes no pixel.
constexpr double NegligibleWeight = 1e-7;

} // namespace

HalfKernel gaussianKernel(int radius, double sigma)
{
    HalfKernel kernel;
    double sum = 0;
    for (int distance = 0; distance <= radius; ++distance) {
        const double ratio = distance / sigma;
        const double weight = std::exp(-ratio * ratio / 2);
        if (weight < NegligibleWeight) {
            break;
        }
        kernel.push_back(weight);
        sum += (distance == 0 ? 1 : 2) * weight;
    }
    for (double& weight : kernel) {
        weight /= sum;
    }
    return kernel;
}

double variance(const HalfKernel& kernel)
{
    double result = 0;
    for (size_t distance = 1; distance < kernel.size(); ++distance) {
        result += 2 * double(distance * distance) * kernel[distance];
    }
    return result;
}
