// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The positions of a coarse grid's points along one side of a picture. They are `step` pixels
/// apart and symmetric, and some are beyond each end, so that each pixel can be interpolated from
/// three points on either side.
class GridAxis
{
public:
    GridAxis(int length, int step)
        : GridAxis(length, step, (length - 1) / step + 6)
    {
    }

    /// Makes an axis with this number of points, as many beyond one end as beyond the other.
    GridAxis(int length, int step, int points)
        : m_length(length)
        , m_step(step)
        , m_points(points)
    {
    }

    /// The length of the picture's side, in pixels.
    int length() const { return m_length; }
    int step() const { return m_step; }
    int points() const { return m_points; }

    /// The distance of a point from the picture's first pixel, in pixels: a multiple of 1/2.
    double position(int point) const
    {
        return (m_length - 1 + (2 * point - m_points + 1) * m_step) / 2.0;
    }

private:
    int m_length;
    int m_step;
    int m_points;
};
