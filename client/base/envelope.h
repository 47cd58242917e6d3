// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QString>

/// What a command prints with --json, in one line: its name, how it went, and its result. The form
/// is described in data/schema/moodsetctl.schema.json.
QString jsonLine(const char* command, const Outcome& outcome);
