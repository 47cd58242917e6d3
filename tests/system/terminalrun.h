// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What a program did in a terminal of its own.
struct TerminalRun
{
    /// Runs a program to its end, its input, output and errors being a terminal of so many columns.
    /// The event loop does not turn meanwhile.
    static TerminalRun run(const QString& program, const QStringList& arguments, int columns = 80);

    /// -1 if it was ended by a signal or could not be started.
    int exitCode = -1;
    /// All that was written to the terminal, with "\n" at the ends of lines.
    QString output;
};
