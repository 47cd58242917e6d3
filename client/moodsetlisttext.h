// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetlist.h"

#include <QString>
#include <QVector>

/// What the command "moodsets" prints.
enum class MoodsetListing {
    Table,
    Names, ///< only the names, one in each line
};

/// The list of moodsets for the standard output. Favourites come first in `moodsets`. All colours
/// must be as isColorText() tells.
QString moodsetListText(
    QVector<ListedMoodset> moodsets, MoodsetListing listing, bool onlyFavorites);
