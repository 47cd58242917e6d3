// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"
#include "invocation.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What the user asks of the client.
struct CommandLine
{
    /// Reads the arguments, the program's name not among them, and checks them against the
    /// commands.
    static CommandLine parse(const QStringList& arguments, const std::vector<Command>& commands);

    /// The options that all commands have.
    static const std::vector<Option>& commonOptions();

    /// The error message for the arguments, in one line. Then only `json` is valid besides. Empty
    /// if they are right.
    QString error;

    /// It has no command if the user wants the help for all commands, or the version.
    Invocation invocation;
    /// Whether the user wants help, for the command if there is one.
    bool wantsHelp = false;
    bool wantsVersion = false;
};
