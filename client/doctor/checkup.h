// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

#include <vector>

/// The result of one check.
struct Checkup
{
    enum class State {
        Good,
        Advice, ///< It works, and could be better.
        Problem, ///< It does not work as it should.
        Unknown, ///< It cannot be told.
    };

    /// The name of the check in JSON.
    QString id;
    State state = State::Good;
    /// The result, in one line.
    QString text;
    /// The command that repairs it. Empty if nothing must be repaired.
    QString mend;
};

using Checkups = std::vector<Checkup>;

/// The bus, the daemon's activation, its unit, its program and its limits.
Checkups checkDaemon();
/// The database, the pictures in it that wait to be read, and the folders that cannot be scanned
/// any more.
Checkups checkLibrary();
/// The key/value store and its defaults, the file types, the theme's files and the wallpapers.
Checkups checkSystem();

QJsonObject checkupRecord(const Checkup& checkup);
