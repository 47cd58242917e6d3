// SPDX-License-Identifier: BSD-3-Clause
#include "doctor/unfinishedrebuild.h"
#include "editsbackup.h"
#include "librarycommands.h"
#include "needs.h"

namespace {

Outcome run(const Invocation& invocation)
{
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    bool isTried = false;
    outcome = EditsBackup::restore(service, invocation.argument(), &isTried);
    if (isTried) {
        const QString path = UnfinishedRebuild::finish(invocation.argument());
        if (path != invocation.argument()) {
            outcome.text += Text::tr("The saved edits are %1 now.").arg(path) + QLatin1Char('\n');
        }
    }
    return outcome;
}

} // namespace

Command restoreCommand()
{
    return {
        "restore",
        Command::Group::Library,
        QT_TRANSLATE_NOOP("Text", "bring back what backup saved"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Brings back what backup saved. A moodset that is missing is made of its "
            "file again. Favourites come back in their order, but not since when each is one. What "
            "cannot be brought back is said."),
        {{"FILE", ValueKind::File}},
        {},
        {{"restore moodsets.json", QT_TRANSLATE_NOOP("Text", "have the edits again")}},
        run};
}
