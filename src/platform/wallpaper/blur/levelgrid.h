// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "fixedpoint.h"
#include "gridaxis.h"

/// A blurred picture as a coarse grid of points.
struct LevelGrid
{
    GridAxis across;
    GridAxis down;
    /// One row for each point of `down`.
    std::vector<LevelRow> rows;
};
