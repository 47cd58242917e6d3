// SPDX-License-Identifier: BSD-3-Clause
#include "filewatch.h"

#include "filecontent.h"

#include <QFileInfo>

FileWatch::FileWatch(QObject* parent)
    : QObject(parent)
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileWatch::compare);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatch::compare);
}

void FileWatch::follow(const QStringList& files)
{
    if (files == m_files) {
        return;
    }
    m_files = files;
    m_stamps = stamps();
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty()) {
        m_watcher.removePaths(watched);
    }
    watchAgain();
}

// Most of what happens in a directory concerns other files.
void FileWatch::compare()
{
    watchAgain();
    const QStringList now = stamps();
    if (now != m_stamps) {
        m_stamps = now;
        Q_EMIT touched();
    }
}

QStringList FileWatch::stamps() const
{
    QStringList stamps;
    for (const QString& file : m_files) {
        stamps.append(fileStamp(file));
    }
    return stamps;
}

// The watch of a file goes with the file when another one takes its name. That of its directory
// tells of the other one.
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
