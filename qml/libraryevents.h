// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>

#include <memory>

class QDBusServiceWatcher;

/// What the daemon announces on the session bus, for all users in the process. Main thread only.
class LibraryEvents : public QObject
{
    Q_OBJECT

public:
    /// The one that all users share; it is gone with the last of them.
    static std::shared_ptr<LibraryEvents> instance();

    LibraryEvents();

Q_SIGNALS:
    /// There is something new to read of the content type, and of types that depend on it: pictures
    /// and moodsets after a change of files (0).
    void contentChanged(int type);

    /// A daemon has come to the bus. It may have made another library.
    void daemonStarted();

    /// The daemon has left the bus.
    void daemonEnded();
};
