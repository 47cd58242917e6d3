// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>

#include <memory>

class QDBusServiceWatcher;

/// Receives the announcements of the daemon on the session bus, for all users in the process. Main
/// thread only.
class LibraryEvents : public QObject
{
    Q_OBJECT

public:
    /// The object that all users share. It is destroyed with its last user.
    static std::shared_ptr<LibraryEvents> instance();

    LibraryEvents();

Q_SIGNALS:
    /// Content of this type has changed. A change of files (0) is also emitted for the types that
    /// depend on files: pictures and moodsets.
    void contentChanged(int type);

    /// A daemon has appeared on the bus. It may have made another library.
    void daemonStarted();

    /// The daemon has left the bus.
    void daemonEnded();
};
