// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <vector>

/// One half of a symmetric kernel: the weight of the centre, then those of the pixels at distance
/// 1, 2 and so on to either side. All weights of both sides add up to 1.
using HalfKernel = std::vector<double>;

/// A Gaussian of `sigma` above 0, cut off behind `radius`, both in pixels, and where its weights
/// become negligible.
HalfKernel gaussianKernel(int radius, double sigma);

/// The variance of a kernel, in square pixels. Those of filters that follow one another add up.
double variance(const HalfKernel& kernel);
