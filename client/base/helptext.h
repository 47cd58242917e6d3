// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <QString>

#include <vector>

/// The help for all commands, for one command, and the man page, all made from the commands.
/// @{
QString overviewHelp(const std::vector<Command>& commands);
QString commandHelp(const Command& command);
QString manPage(const std::vector<Command>& commands);
/// @}

/// "show MOODSET [--json]", for help.
QString synopsis(const Command& command);

/// The title of a group of commands.
QString groupTitle(Command::Group group);
