// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

/// Saves what users have edited, stops the daemon, makes it build a new database, and restores the
/// edits. The old database stays in the same directory. Progress is shown if wanted.
Outcome rebuildLibrary(bool showProgress);
