// SPDX-License-Identifier: BSD-3-Clause
#include "editsbackup.h"
#include "invocation.h"
#include "librarycommands.h"

#include <QFileInfo>

namespace {

Outcome run(const Invocation& invocation)
{
    return EditsBackup::write(QFileInfo(invocation.argument()).absoluteFilePath());
}

} // namespace

Command backupCommand()
{
    return {
        "backup",
        Command::Group::Library,
        QT_TRANSLATE_NOOP("Text", "save what was edited to a file"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Saves what is in the database alone: which moodsets there are, their names, "
            "favourites, colours, volumes and tones as they were edited, and where downloaded "
            "pictures came from. Pictures and bundles are not in it. The daemon need not run."),
        {{"FILE", ValueKind::File}},
        {},
        {{"backup moodsets.json",
          QT_TRANSLATE_NOOP("Text", "save the edits before the phone is set up anew")}},
        run};
}
