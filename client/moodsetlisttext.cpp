// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlisttext.h"

#include "activemoodset.h"
#include "colortext.h"
#include "moodsettable.h"
#include "printabletext.h"
#include "terminal.h"

QString moodsetListText(const QVector<ListedMoodset>& moodsets, MoodsetListing listing)
{
    if (listing == MoodsetListing::Table) {
        return moodsetTable(
            moodsets, readActiveMoodset(), standardOutputColorStyle(), Terminal::outputColumns());
    }
    QString names;
    for (const ListedMoodset& moodset : moodsets) {
        names += printableText(calledName(moodset)) + QLatin1Char('\n');
    }
    return names;
}
