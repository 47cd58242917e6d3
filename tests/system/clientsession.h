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

        /// The JSON object that the output is.
        QJsonObject json() const;
        /// Its member "result".
        QJsonObject result() const;
    };

    ClientSession();
    /// Ends the daemon.
    ~ClientSession();
    Q_DISABLE_COPY_MOVE(ClientSession)

    /// Lets the session bus start the daemon, or no longer; false if it cannot be told to.
    Q_REQUIRED_RESULT static bool letDaemonBeStarted(bool isStarted = true);
    /// Ends the daemon, if it runs, with a signal, and waits until it has left the bus.
    Q_REQUIRED_RESULT static bool endDaemon(int signal = SIGTERM);

    /// Runs moodsetctl with its output in pipes. The event loop turns meanwhile.
    static Result run(const QStringList& arguments, const QStringList& environment = {});
    /// Runs it in a terminal.
    static TerminalRun runInTerminal(const QStringList& arguments, int columns = 80);
    /// Runs it with --json; checks the output against the schema, which fails the current test if
    /// it does not keep to it.
    static Result runJson(const QStringList& arguments, const QStringList& environment = {});

    UserFolders folders;

private:
    const QByteArray m_cache = qgetenv("XDG_CACHE_HOME");
    const InstalledBundles m_bundles;
    const UserStore m_store;
};
