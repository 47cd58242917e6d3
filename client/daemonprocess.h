// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The kernel's data about a running daemon.
struct DaemonState
{
    /// The state of a process. For a process of another user, all members are unknown.
    static DaemonState read(qint64 processId);

    qint64 processId = 0;
    /// The version of the content library that it has loaded, which is its own; empty if unknown.
    QString version;
    /// Whether its program has been replaced since it was started.
    bool isOutdated = false;
    /// The number of directories that it watches. -1 if unknown.
    int watches = -1;
    /// The limit of its address space in bytes. 0 if there is no limit, -1 if unknown.
    qint64 addressLimit = -1;
    /// The peak of its address space in bytes. -1 if unknown.
    qint64 addressPeak = -1;
    /// The limit of its open files. -1 if unknown.
    qint64 fileLimit = -1;
};

/// The number of directories that all programs of a user together may watch. -1 if unknown.
int watchLimit();

/// The last line that reports a failure in the daemon's journal after the time `since`, in ms since
/// 1970. Empty if there is none, or no journal.
QString journalFailure(qint64 since);
