// SPDX-License-Identifier: BSD-3-Clause
#include "clampedreference.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Line = std::vector<double>;

/// The weights of one pass at the distances 0 to the radius.
Line weightsOf(const BlurPasses& passes)
{
    Line weights;
    double sum = 0;
    for (int distance = 0; distance <= passes.radius; ++distance) {
        weights.push_back(std::exp(-0.5 * std::pow(distance / passes.sigma, 2)));
        sum += weights.back() * (distance == 0 ? 1 : 2);
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return weights;
}

double totalSigma(const BlurPasses& passes)
{
    const Line weights = weightsOf(passes);
    double variance = 0;
    for (int distance = 1; distance <= passes.radius; ++distance) {
        variance += 2 * weights[size_t(distance)] * distance * distance;
    }
    return std::sqrt(passes.rounds * variance);
}

/// One channel of a picture, as numbers.
class Plane
{
public:
    Plane(const QImage& picture, int shift)
        : m_width(picture.width())
        , m_height(picture.height())
    {
        for (int y = 0; y < m_height; ++y) {
            for (int x = 0; x < m_width; ++x) {
                m_values.push_back(picture.pixel(x, y) >> shift & 0xff);
            }
        }
    }

    double at(int x, int y) const { return m_values[index(x, y)]; }

    void run(const BlurPasses& passes)
    {
        const Line weights = weightsOf(passes);
        for (int y = 0; y < m_height; ++y) {
            filterLine(index(0, y), 1, m_width, weights, passes.rounds);
        }
        for (int x = 0; x < m_width; ++x) {
            filterLine(index(x, 0), size_t(m_width), m_height, weights, passes.rounds);
        }
    }

private:
    size_t index(int x, int y) const { return size_t(y) * size_t(m_width) + size_t(x); }

    void filterLine(size_t start, size_t stride, int length, const Line& weights, int rounds)
    {
        Line line;
        for (int i = 0; i < length; ++i) {
            line.push_back(m_values[start + size_t(i) * stride]);
        }
        for (int round = 0; round < rounds; ++round) {
            line = filtered(line, weights);
        }
        for (int i = 0; i < length; ++i) {
            m_values[start + size_t(i) * stride] = line[size_t(i)];
        }
    }

    static Line filtered(const Line& line, const Line& weights)
    {
        const int last = int(line.size()) - 1;
        const int radius = int(weights.size()) - 1;
        Line result(line.size());
        for (int i = 0; i <= last; ++i) {
            for (int offset = -radius; offset <= radius; ++offset) {
                const int source = qBound(0, i + offset, last);
                result[size_t(i)] += weights[size_t(qAbs(offset))] * line[size_t(source)];
            }
        }
        return result;
    }

    int m_width;
    int m_height;
    Line m_values;
};

} // namespace

BlurError blurError(const QImage& picture, const QImage& blurred, const BlurPasses& passes)
{
    const int margin = int(std::ceil(3 * totalSigma(passes)));
    const QRect inside = picture.rect().adjusted(margin, margin, -margin, -margin);
    BlurError error;
    double sum = 0;
    for (const int shift : {0, 8, 16}) {
        Plane exact(picture, shift);
        exact.run(passes);
        const Plane found(blurred, shift);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const double difference = std::abs(found.at(x, y) - exact.at(x, y));
                error.largest = std::max(error.largest, difference);
                if (inside.contains(x, y)) {
                    error.largestInside = std::max(error.largestInside, difference);
                }
                sum += difference;
            }
        }
    }
    error.mean = sum / (3.0 * picture.width() * picture.height());
    return error;
}
