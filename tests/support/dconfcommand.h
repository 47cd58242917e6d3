// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QStringList>

#include <sys/types.h>

/// Reads or changes the key/value store from another process, with the command "dconf": for
/// instance runDconf({"write", "/key", "'text'"}). Returns its output without the last line break.
/// If the command fails or takes longer than 20 seconds, the current test fails. The event loop
/// does not run during this time.
QByteArray runDconf(const QStringList& arguments);

/// Gives this process, and those that it starts, system defaults from a dconf key file, and a list
/// of keys, one per line, that the user cannot set. Call it before the first use of the store.
/// Returns false if the files cannot be made.
Q_REQUIRED_RESULT bool useSystemDefaults(const QByteArray& keyFile, const QByteArray& locks = {});

/// The id of the store's service process, which is started if it is not running.
qint64 dconfServicePid();

/// Kills the store's service. Returns true when the bus has noticed this, or false after 5 seconds.
/// The next write starts a new service.
Q_REQUIRED_RESULT bool killDconfService();

/// Stops the store's service while the object lives. Writes during this time are stored later.
class PausedDconfService
{
public:
    PausedDconfService();
    ~PausedDconfService() { resume(); }
    Q_DISABLE_COPY_MOVE(PausedDconfService)

    /// False if the service could not be stopped.
    bool isPaused() const { return m_pid > 0; }
    void resume();

private:
    pid_t m_pid;
};
