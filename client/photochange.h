// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <libraryfile.h>

#include <QVector>

/// The change of one picture between two states of the database.
struct PhotoChange
{
    enum class Kind { Added, Changed, Removed };

    Kind kind;
    /// The picture as it is now, or as it was if it has been removed.
    LibraryFile photo;
};

/// The changes from `before` to `after`: removals first, then all others in the order of `after`.
QVector<PhotoChange> photoChanges(
    const QVector<LibraryFile>& before, const QVector<LibraryFile>& after);
