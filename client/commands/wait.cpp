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
        QT_TRANSLATE_NOOP("Text", "wait until the daemon has indexed everything"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Waits until the daemon has indexed everything. Without --log, the "
            "daemon counts as idle if it has written nothing for a second while it "
            "replied to calls. On a terminal, progress is shown."),
        {},
        {{"log", "FILE", ValueKind::File,
          QT_TRANSLATE_NOOP(
              "Text",
              "read the daemon's log with debug messages from this file, to know "
              "exactly when it is idle for the first time")},
         {"timeout", "SECONDS", ValueKind::Seconds,
          QT_TRANSLATE_NOOP("Text", "how long to wait; without a limit if not given")}},
        {{"wait --timeout 60", QT_TRANSLATE_NOOP("Text", "wait for a minute at most")}},
        run};
}
