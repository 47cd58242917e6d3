// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Loads the module with all commands, and runs the command that the arguments name. Returns the
/// exit status.
int runCommands(int argc, char** argv);
