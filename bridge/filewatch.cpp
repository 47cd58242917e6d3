// SPDX-License-Identifier: BSD-3-Clause
#include "filewatch.h"

#include <QFileInfo>

FileWatch::FileWatch(QObject* parent)
    : QObject(parent)
{
    const auto tell = [this] {
        watchAgain();
        Q_EMIT touched();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, tell);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, tell);
}

void FileWatch::follow(const QStringList& files)
{
    if (files == m_files) {
        return;
    }
    m_files = files;
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty()) {
        m_watcher.removePaths(watched);
    }
    watchAgain();
}

// When another file takes the name of a watched file, the watch stays on the old file. The watch of
// the directory reports the new file.
void FileWatch::watchAgain()
{
    for (const QString& file : m_files) {
        const QFileInfo info(file);
        const QString directory = info.path();
        if (!m_watcher.directories().contains(directory) && QFileInfo(directory).isDir()) {
            m_watcher.addPath(directory);
        }
        if (!m_watcher.files().contains(file) && info.isFile()) {
            m_watcher.addPath(file);
        }
    }
}
