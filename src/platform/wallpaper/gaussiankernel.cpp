// SPDX-License-Identifier: BSD-3-Clause
#include "gaussiankernel.h"

#include <cmath>

HalfKernel gaussianKernel(int radius, double sigma)
{
    HalfKernel kernel;
    double sum = 0;
    for (int distance = 0; distance <= radius; ++distance) {
        const double ratio = distance / sigma;
        kernel.push_back(std::exp(-ratio * ratio / 2));
        sum += (distance == 0 ? 1 : 2) * kernel.back();
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
