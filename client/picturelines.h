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

/// Prints the changes that a watch reports, as lines or as JSON, with one change in each line,
/// until the daemon ends. This is a failure. Runs the event loop.
Outcome printChanges(
    const Invocation& invocation, const MoodsetService& service, const PhotoWatch& watch);
