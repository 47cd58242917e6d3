// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// What the user asks of the client.
struct CommandLine
{
    enum class Command {
        Help,
        Version,
        Photos,
        Watch,
        Wait,
        Index,
        Moodsets,
        Set,
        Create,
        Favorite,
        Remove,
        Install,
        Refresh
    };

    /// Reads the arguments, the program's name not among them.
    static CommandLine parse(const QStringList& arguments);

    /// The text for Command::Help.
    static QString helpText();

    /// What is wrong with the arguments, in one line; then nothing else holds. Empty if all is
    /// well.
    QString error;

    Command command = Command::Help;
    /// Whether to follow changes after the table.
    bool watch = false;
    /// Whether to show how far the work is.
    bool progress = false;
    /// Paths are shown relative to this absolute path.
    QString folder;
    /// The daemon's log; empty if not given.
    QString log;
    /// What the command is about: a picture, a folder or a moodset; empty if it takes nothing.
    QString subject;
    /// Whether the moodset is to be a favourite.
    bool favorite = false;
};
