// SPDX-License-Identifier: BSD-3-Clause
#include "librarycommands.h"
#include "libraryfault.h"
#include "needs.h"
#include "photowatch.h"
#include "picturelines.h"

#include <libraryreader.h>

namespace {

Outcome run(const Invocation& invocation)
{
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFault(library));
    }
    const PhotoWatch watch(service, library);
    return printChanges(invocation, service, watch);
}

} // namespace

Command watchCommand()
{
    return {
        "watch",
        Command::Group::Pictures,
        QT_TRANSLATE_NOOP("Text", "show pictures as they are added, changed and removed"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints each picture that is added, changed or removed, one in each "
            "line, until the daemon ends. With --json, each line is an object."),
        {},
        {{"folder", "DIR", ValueKind::Folder,
          QT_TRANSLATE_NOOP(
              "Text",
              "show paths relative to DIR; relative to the user's pictures folder if "
              "not given")}},
        {{"watch --json", QT_TRANSLATE_NOOP("Text", "follow the library from a program")}},
        run};
}
