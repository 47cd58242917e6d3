// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "moodsetlibrary.h"
#include "moodsettable.h"
#include "printabletext.h"
#include "subject.h"
#include "terminal.h"
#include "theme.h"

#include <QJsonArray>

#include <algorithm>

namespace {

/// Keeps only the favourites. They come first in the list.
template <typename Moodsets, typename IsFavorite>
void keepFavorites(Moodsets* moodsets, IsFavorite isFavorite)
{
    const auto others = std::find_if_not(moodsets->begin(), moodsets->end(), isFavorite);
    moodsets->erase(others, moodsets->end());
}

Outcome records(const Invocation& invocation)
{
    MoodsetLibrary library;
    QVector<Moodset> moodsets = library.moodsets();
    if (!library.error().isEmpty()) {
        return Outcome::failed(library.error());
    }
    if (invocation.has("favorites")) {
        keepFavorites(
            &moodsets, [](const Moodset& moodset) { return moodset.constData()->favorite; });
    }
    const QString active = Theme::readActiveMoodset();
    QJsonArray array;
    for (const Moodset& moodset : qAsConst(moodsets)) {
        array.append(JsonRecord::moodset(*moodset, active));
    }
    return Outcome::done({}, {{QStringLiteral("moodsets"), array}});
}

Outcome run(const Invocation& invocation)
{
    using Summary = LibraryReader::Summary;
    if (invocation.json) {
        return records(invocation);
    }
    MoodsetLibrary library;
    QVector<Summary> moodsets = library.summaries();
    if (!library.error().isEmpty()) {
        return Outcome::failed(library.error());
    }
    if (invocation.has("favorites")) {
        keepFavorites(&moodsets, [](const Summary& moodset) { return moodset.favorite; });
    }
    if (!invocation.has("names")) {
        return Outcome::done(
            moodsetTable(
                moodsets, Theme::readActiveMoodset(), standardOutputColorStyle(),
                Terminal::outputColumns()),
            {});
    }
    QString names;
    for (const Summary& moodset : qAsConst(moodsets)) {
        names += printableText(calledName(moodset)) + QLatin1Char('\n');
    }
    return Outcome::done(names, {});
}

} // namespace

Command moodsetsCommand()
{
    return {
        "moodsets",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "show a table of all moodsets"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints a table of all moodsets, favourites first, and their number. The "
            "colours are the primary, the secondary, the highlight and the secondary "
            "highlight colour. A terminal shows them as fields without transparency; "
            "otherwise they are written as #aarrggbb. The daemon need not run."),
        {},
        {{"favorites", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "print only favourites")},
         {"names", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "print only names, one in each line")}},
        {{"moodsets", QT_TRANSLATE_NOOP("Text", "find a moodset")},
         {"moodsets --json", QT_TRANSLATE_NOOP("Text", "the same for programs")}},
        run};
}
