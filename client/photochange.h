// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photo.h"

#include <QVector>

/// What has become of one picture between two looks at the database.
struct PhotoChange
{
    enum class Kind { Added, Changed, Removed };

    Kind kind;
    /// The picture as it is now, or as it was if it has been removed.
    Photo photo;
};

/// The changes from before to after, removals first, then in the order of after.
QVector<PhotoChange> photoChanges(const QVector<Photo>& before, const QVector<Photo>& after);
