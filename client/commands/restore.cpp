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
        QT_TRANSLATE_NOOP("Text", "restore the edits that backup has saved"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Restores the edits that backup has saved. If a moodset is missing, it "
            "is made from its file again. Favourites keep their order, but not their "
            "times. The command reports what it cannot restore."),
        {{"FILE", ValueKind::File}},
        {},
        {{"restore moodsets.json", QT_TRANSLATE_NOOP("Text", "restore the edits")}},
        run};
}
