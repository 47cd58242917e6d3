// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"

#include <vector>

/// What turns the rows of a model into others, so that what stays keeps its place in views. The
/// steps are done in this order: removals, moves, insertions, and last the announcement of rows
/// that show other values.
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
    /// Each by the positions that the moves before it have left. `to` is where the row stands
    /// afterwards.
    std::vector<Move> moves;
    /// In ascending order, by the positions of the new rows.
    std::vector<Range> insertions;
    /// Rows that stay and have other values, likewise.
    std::vector<Range> changes;
    /// The new rows.
    ContentRows rows;

    bool isEmpty() const
    {
        return removals.empty() && moves.empty() && insertions.empty() && changes.empty();
    }
};

/// Which rows of two listings are the same record.
enum class RowKey {
    Id,
    /// In a database that was made again, all ids are other ones.
    Url
};

/// The update from `before` to `after`. Rows that stay and are not changed must have the same
/// record handle in both. No key may be there twice in either of the lists.
RowUpdate rowUpdate(const ContentRows& before, const ContentRows& after, RowKey key);
