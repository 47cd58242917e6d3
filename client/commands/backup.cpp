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
        QT_TRANSLATE_NOOP("Text", "save the edits to a file"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Saves what only the database has: the moodsets with their edited names, "
            "favourites, colours, volumes and tones, and the addresses of downloaded "
            "pictures. It does not save pictures and bundles. The daemon need not "
            "run."),
        {{"FILE", ValueKind::File}},
        {},
        {{"backup moodsets.json",
          QT_TRANSLATE_NOOP("Text", "save the edits before the phone is reset")}},
        run};
}
