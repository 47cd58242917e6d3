// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QString>

#include <cstdint>

/// A directory with an inotify watch.
struct WatchedDirectory
{
    /// The directory's path with a "/" at its end.
    QString path;
    /// `directory.id`
    qint64 id = 0;
};

/// The inotify watches of directories. Each event looks a directory up by its watch, and each scan
/// by its path, so both lookups are fast.
class WatchTable
{
public:
    /// Makes watches on an inotify descriptor. If it is -1, nothing can be watched.
    explicit WatchTable(int inotifyFd);

    /// Watches the directory at `path` for the events of `mask`. Returns the watch, or a negative
    /// number on failure. If the same directory is watched under another path, the kernel gives the
    /// same watch, and the new path replaces the first one.
    int add(const QString& path, qint64 id, uint32_t mask);
    /// Whether the directory at `path` is watched.
    bool contains(const QString& path) const;
    /// The directory of a watch. Its path is empty if there is no such watch.
    WatchedDirectory directory(int watch) const;

    void remove(int watch);
    /// Removes the watch of the directory at `path`, if it has one.
    void remove(const QString& path);
    void clear();

private:
    int m_inotifyFd;
    QHash<int, WatchedDirectory> m_directories;
    /// The keys are WatchedDirectory::path.
    QHash<QString, int> m_watches;
};
