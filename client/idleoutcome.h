// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QString>

#include <libraryreader.h>

class MoodsetService;

/// Waits until the daemon is idle (see IdleWait), and reports the numbers of its content. `log` is
/// the path of its log, or empty. 0 ms means no limit. Progress is shown if wanted. This runs the
/// event loop.
Outcome awaitIdle(
    MoodsetService* service, const LibraryReader& library, const QString& log, int timeoutMs,
    bool showProgress);
