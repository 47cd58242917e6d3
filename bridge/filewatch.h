// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

/// Tells that one of some files has been written, replaced, made or removed. Main thread only.
class FileWatch : public QObject
{
    Q_OBJECT
public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Follows these files instead of the former ones. They need not exist.
    void follow(const QStringList& files);

Q_SIGNALS:
    void touched();

private:
    void compare();
    QStringList stamps() const;
    void watchAgain();

    QStringList m_files;
    QStringList m_stamps; ///< in the order of the files
    QFileSystemWatcher m_watcher;
};
