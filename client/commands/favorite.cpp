// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetcommands.h"
#include "needs.h"
#include "subject.h"

#include <moodsetnames.h>

namespace {

Outcome run(const Invocation& invocation)
{
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    const Found<Moodset> moodset = namedMoodset(invocation.argument());
    if (!moodset.value) {
        return Outcome::failed(about(invocation.argument(), moodset.fault));
    }
    const bool isFavorite = invocation.argument(1) == QLatin1String("on");
    return editMoodset(service, moodset.value, {{MoodsetNames::Attribute::Favorite, isFavorite}});
}

} // namespace

Command favoriteCommand()
{
    return {
        "favorite",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "make a moodset a favourite, or end that"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes a moodset a favourite, or ends that. Favourites are listed before "
            "the others."),
        {{"MOODSET", ValueKind::MoodsetName}, {"on|off", ValueKind::Switch}},
        {},
        {{"favorite \"Coast light\" on", QT_TRANSLATE_NOOP("Text", "list it first")}},
        run};
}
