// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlDatabase>
#include <QString>

/// Keeps the daemon from writing to its database, as long as the object lives.
///
/// The daemon's next write waits, and all of the daemon's work with it, for 5 seconds at most.
/// Calls that reach it meanwhile are then handled in one go.
class LibraryLock
{
public:
    /// Waits for a write that is under way. The database of this process's user must exist.
    LibraryLock();
    ~LibraryLock();
    Q_DISABLE_COPY_MOVE(LibraryLock)

    /// False if the lock could not be had.
    bool isHeld() const { return m_held; }

private:
    QString m_connectionName;
    QSqlDatabase m_database;
    bool m_held;
};
