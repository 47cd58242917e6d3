// SPDX-License-Identifier: BSD-3-Clause
#include "idleoutcome.h"
#include "librarycommands.h"
#include "libraryfault.h"
#include "needs.h"

namespace {

Outcome run(const Invocation& invocation)
{
    MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFault(library));
    }
    return awaitIdle(
        &service, library, invocation.value("log"), invocation.timeoutMs(0),
        !invocation.quiet && !invocation.json);
}

} // namespace

Command waitCommand()
{
    return {
        "wait",
        Command::Group::Library,
        QT_TRANSLATE_NOOP("Text", "wait until the daemon has indexed all it knows of"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Waits until the daemon has indexed all it knows of. Without --log, this is "
            "judged by its having written nothing for a second while it answered "
            "calls. On a terminal, progress is shown."),
        {},
        {{"log", "FILE", ValueKind::File,
          QT_TRANSLATE_NOOP(
              "Text",
              "read the daemon's log, with debug messages, from this file, and know "
              "exactly when it is idle for the first time")},
         {"timeout", "SECONDS", ValueKind::Seconds,
          QT_TRANSLATE_NOOP("Text", "wait for so long; for any time if not given")}},
        {{"wait --timeout 60", QT_TRANSLATE_NOOP("Text", "wait for a minute at most")}},
        run};
}
