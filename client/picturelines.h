// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QString>

class Invocation;
class MoodsetService;
class PhotoWatch;

/// The folder that paths are shown relative to: that of the option --folder, or the user's pictures
/// folder.
QString shownFolder(const Invocation& invocation);

/// Prints the changes that a watch tells of, as lines or as JSON, one to a line, until the daemon
/// ends, which is a failure. Turns the event loop.
Outcome printChanges(
    const Invocation& invocation, const MoodsetService& service, const PhotoWatch& watch);
