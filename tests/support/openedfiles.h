// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Notes every opening of a file below a folder, by whatever process, while it lives. The folder's
/// directories are those that are there at its beginning; the opening of a directory does not
/// count.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QString& folder);
    ~OpenedFiles();
    Q_DISABLE_COPY_MOVE(OpenedFiles)

    /// False if not all openings can be told.
    bool isValid() const { return m_valid; }

    /// The paths of the files opened so far, oldest first, once for each opening. Too many of them
    /// between two calls make the object invalid.
    QStringList paths();

private:
    void watch(const QString& directory);

    int m_inotify;
    bool m_valid;
    QHash<int, QString> m_directories;
    QStringList m_paths;
};
