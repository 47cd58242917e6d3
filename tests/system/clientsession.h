// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "installedbundles.h"
#include "terminalrun.h"
#include "userfolders.h"
#include "userstore.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <csignal>

/// A user of the real moodsetctl, whose daemon the session bus starts when it is needed.
class ClientSession
{
public:
    struct Result
    {
        int exitCode = -1;
        QString output;
        QString errors;

        /// The output as a JSON object.
        QJsonObject json() const;
        /// Its member "result".
        QJsonObject result() const;
    };

    ClientSession();
    /// Ends the daemon.
    ~ClientSession();
    Q_DISABLE_COPY_MOVE(ClientSession)

    /// Allows or forbids the session bus to start the daemon. False if this fails.
    Q_REQUIRED_RESULT static bool letDaemonBeStarted(bool isStarted = true);
    /// Ends the daemon with a signal, if it runs, and waits until it has left the bus.
    Q_REQUIRED_RESULT static bool endDaemon(int signal = SIGTERM);

    /// Runs moodsetctl with its output in pipes. The event loop runs during this time.
    static Result run(const QStringList& arguments, const QStringList& environment = {});
    /// Runs it in a terminal.
    static TerminalRun runInTerminal(const QStringList& arguments, int columns = 80);
    /// Runs it with --json. If the output does not match the schema, the current test fails.
    static Result runJson(const QStringList& arguments, const QStringList& environment = {});

    UserFolders folders;

private:
    const QByteArray m_cache = qgetenv("XDG_CACHE_HOME");
    const InstalledBundles m_bundles;
    const UserStore m_store;
};
