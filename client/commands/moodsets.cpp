// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "moodsetlibrary.h"
#include "moodsetlisttext.h"

#include <QJsonArray>

#include <algorithm>

namespace {

Outcome records(const QVector<Moodset>& moodsets)
{
    const QString active = readActiveMoodset();
    QJsonArray array;
    for (const Moodset& moodset : moodsets) {
        array.append(JsonRecord::moodset(*moodset, active));
    }
    return Outcome::done({}, {{QStringLiteral("moodsets"), array}});
}

ListedMoodset listed(const Moodset& moodset)
{
    using JsonRecord::colorText;
    return {
        moodset->id,
        moodset->displayName,
        moodset->url.toLocalFile(),
        moodset->favorite,
        colorText(moodset->primaryColor),
        colorText(moodset->secondaryColor),
        colorText(moodset->highlightColor),
        colorText(moodset->secondaryHighlightColor)};
}

// The program itself prints most lists, without this code; see start/plainlist.h.
Outcome run(const Invocation& invocation)
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
    if (invocation.json) {
        return records(moodsets);
    }
    QVector<ListedMoodset> list;
    std::transform(moodsets.cbegin(), moodsets.cend(), std::back_inserter(list), listed);
    return Outcome::done(
        moodsetListText(
            list, invocation.has("names") ? MoodsetListing::Names : MoodsetListing::Table),
        {});
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
