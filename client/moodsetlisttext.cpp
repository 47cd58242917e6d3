// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlisttext.h"

#include "activemoodset.h"
#include "colortext.h"
#include "moodsettable.h"
#include "printabletext.h"
#include "terminal.h"

#include <algorithm>

QString moodsetListText(QVector<ListedMoodset> moodsets, MoodsetListing listing, bool onlyFavorites)
{
    if (onlyFavorites) {
        const auto isFavorite = [](const ListedMoodset& moodset) { return moodset.favorite; };
        moodsets.erase(
            std::find_if_not(moodsets.begin(), moodsets.end(), isFavorite), moodsets.end());
    }
    if (listing == MoodsetListing::Table) {
        return moodsetTable(
            moodsets, readActiveMoodset(), standardOutputColorStyle(), Terminal::outputColumns());
    }
    QString names;
    for (const ListedMoodset& moodset : qAsConst(moodsets)) {
        names += printableText(calledName(moodset)) + QLatin1Char('\n');
    }
    return names;
}
