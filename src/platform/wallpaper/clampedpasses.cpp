// SPDX-License-Identifier: BSD-3-Clause
#include "clampedpasses.h"

#include <QImage>

#include <algorithm>

namespace {

constexpr int Channels = 4;
/// How many columns are filtered at once, which is more than one so that memory is read in runs,
/// and few so that their values take little memory.
constexpr int ColumnsAtOnce = 8;

/// Several lines of values side by side, so that one step of a filter handles them all: the
/// channels of a row's pixels, or of those of some columns.
class Lines
{
public:
    Lines(int length, int lanes)
        : m_length(length)
        , m_lanes(lanes)
        , m_values(size_t(length) * size_t(lanes))
        , m_filtered(m_values.size())
    {
    }

    float* at(int position) { return m_values.data() + offset(position); }

    void filter(const HalfKernel& kernel, int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            for (int position = 0; position < m_length; ++position) {
                filterAt(position, kernel);
            }
            m_values.swap(m_filtered);
        }
    }

private:
    [[nodiscard]] size_t offset(int position) const { return size_t(position) * size_t(m_lanes); }

    void filterAt(int position, const HalfKernel& kernel)
    {
        float* const target = m_filtered.data() + offset(position);
        std::fill_n(target, m_lanes, 0.0F);
        // Each pixel is its own neighbour at distance 0 on both sides.
        auto weight = float(kernel.front() / 2);
        for (int distance = 0; distance < int(kernel.size()); ++distance) {
            const float* const before = at(std::max(position - distance, 0));
            const float* const behind = at(std::min(position + distance, m_length - 1));
            for (int lane = 0; lane < m_lanes; ++lane) {
                target[lane] += weight * (before[lane] + behind[lane]);
            }
            weight = distance + 1 < int(kernel.size()) ? float(kernel[size_t(distance) + 1]) : 0;
        }
    }

    const int m_length;
    const int m_lanes;
    std::vector<float> m_values;
    std::vector<float> m_filtered;
};

void load(const uchar* bytes, int count, float* values)
{
    std::transform(bytes, bytes + count, values, [](uchar byte) { return float(byte); });
}

void store(const float* values, int count, uchar* bytes)
{
    std::transform(values, values + count, bytes, [](float value) {
        const float raised = value + 0.5F;
        return uchar(raised);
    });
}

void filterRows(QImage* image, const HalfKernel& kernel, int rounds)
{
    const int bytes = image->width() * Channels;
    Lines lines(image->width(), Channels);
    for (int y = 0; y < image->height(); ++y) {
        uchar* const row = image->scanLine(y);
        load(row, bytes, lines.at(0));
        lines.filter(kernel, rounds);
        store(lines.at(0), bytes, row);
    }
}

void filterColumns(QImage* image, const HalfKernel& kernel, int rounds)
{
    for (int x = 0; x < image->width(); x += ColumnsAtOnce) {
        const int lanes = std::min(ColumnsAtOnce, image->width() - x) * Channels;
        const int offset = x * Channels;
        Lines lines(image->height(), lanes);
        for (int y = 0; y < image->height(); ++y) {
            load(image->constScanLine(y) + offset, lanes, lines.at(y));
        }
        lines.filter(kernel, rounds);
        for (int y = 0; y < image->height(); ++y) {
            store(lines.at(y), lanes, image->scanLine(y) + offset);
        }
    }
}

} // namespace

void runClampedPasses(QImage* image, const HalfKernel& kernel, int rounds)
{
    filterRows(image, kernel, rounds);
    filterColumns(image, kernel, rounds);
}
