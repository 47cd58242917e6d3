// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

/// Reports that one of some files may have been written, replaced or made. Main thread only.
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
    void watchAgain();

    QStringList m_files;
    QFileSystemWatcher m_watcher;
};
