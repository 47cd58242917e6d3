// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <vector>

/// All commands, in the order of the help.
const std::vector<Command>& allCommands();
