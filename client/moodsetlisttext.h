// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetlist.h"

#include <QString>
#include <QVector>

#include <algorithm>

/// What the command "moodsets" prints.
enum class MoodsetListing {
    Table,
    Names, ///< only the names, one in each line
};

/// Removes all moodsets but the favourites, which come first in each list of moodsets.
template <typename Moodsets, typename IsFavorite>
void keepFavorites(Moodsets* moodsets, IsFavorite isFavorite)
{
    moodsets->erase(
        std::find_if_not(moodsets->begin(), moodsets->end(), isFavorite), moodsets->end());
}

/// The list of moodsets for the standard output. All colours must be as isColorText() tells.
QString moodsetListText(const QVector<ListedMoodset>& moodsets, MoodsetListing listing);
