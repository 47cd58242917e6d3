// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The candidates for the last of some words, which may be empty.
struct Candidates
{
    /// Reads moodset names from the database. Words are those after the program's name.
    static Candidates find(const std::vector<Command>& commands, const QStringList& words);

    /// The candidates, each with its meaning, which may be empty.
    QVector<QPair<QString, QString>> words;
    /// Whether the shell should also offer files or directories.
    bool files = false;
    bool folders = false;

    /// For the shell: a line "files", "folders" or "words", then a line for each word, with its
    /// meaning after a tab.
    QString text() const;
};
