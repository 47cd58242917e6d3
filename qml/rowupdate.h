// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"

#include <vector>

/// The steps from the old rows of a model to the new ones. Views keep the position of the rows that
/// stay. The order of the steps is: removals, moves, insertions, and last the announcement of rows
/// with changed values.
struct RowUpdate
{
    struct Range
    {
        int first = 0;
        int count = 0;
    };
    struct Move
    {
        int from = 0;
        int to = 0;
    };

    /// In ascending order, by the positions of the old rows.
    std::vector<Range> removals;
    /// The old rows without the removed ones; empty if none is removed.
    ContentRows kept;
    /// The positions are those after all moves before this one. `to` is the position of the row
    /// after the move.
    std::vector<Move> moves;
    /// In ascending order, by the positions of the new rows.
    std::vector<Range> insertions;
    /// The rows that stay and have changed values, in the same order.
    std::vector<Range> changes;
    /// The new rows.
    ContentRows rows;

    bool isEmpty() const
    {
        return removals.empty() && moves.empty() && insertions.empty() && changes.empty();
    }
};

/// How to recognise the same record in two listings.
enum class RowKey {
    Id,
    /// In a rebuilt database, all ids are different.
    Url
};

/// The update from `before` to `after`. Rows that stay and have not changed must have the same
/// record handle in both. No key may be in a list twice.
RowUpdate rowUpdate(const ContentRows& before, const ContentRows& after, RowKey key);
