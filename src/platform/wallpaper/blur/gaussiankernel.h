// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <vector>

/// One half of a symmetric kernel: the weight of the centre, then the weights of the pixels at the
/// distances 1, 2 and so on. The weights of both sides add up to 1.
using HalfKernel = std::vector<double>;

/// A Gaussian of `sigma`, which must be above 0. It ends at `radius` or where its weights become
/// negligible. Both are in pixels.
HalfKernel gaussianKernel(int radius, double sigma);

/// The variance of a kernel, in square pixels. If filters are applied one after the other, their
/// variances add up.
double variance(const HalfKernel& kernel);
