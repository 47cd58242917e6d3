// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Where the points of a coarse grid lie along one side of a picture: `step` pixels apart, the
/// same from either end, and some beyond each end, so that each pixel has three points on either
/// side to be interpolated from.
class GridAxis
{
public:
    GridAxis(int length, int step)
        : m_length(length)
        , m_step(step)
        , m_points((length - 1) / step + 6)
    {
    }

    /// The picture's, in pixels.
    [[nodiscard]] int length() const { return m_length; }
    [[nodiscard]] int step() const { return m_step; }
    [[nodiscard]] int points() const { return m_points; }

    /// Of a point, in pixels from the first one: a multiple of a half.
    [[nodiscard]] double position(int point) const
    {
        return (m_length - 1 + (2 * point - m_points + 1) * m_step) / 2.0;
    }

private:
    int m_length;
    int m_step;
    int m_points;
};
