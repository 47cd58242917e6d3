// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

/// Saves what users have edited, stops the daemon, has it build a new database, and puts the edits
/// back. The old database stays beside the new one. Progress is shown if wanted.
Outcome rebuildLibrary(bool showProgress);
