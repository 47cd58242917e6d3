// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Records every opening of a file below a directory, by any process, while the object lives. It
/// covers the sub-directories that exist at the start. The opening of a directory does not count.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QString& folder);
    ~OpenedFiles();
    Q_DISABLE_COPY_MOVE(OpenedFiles)

    /// False if some openings may be missing.
    bool isValid() const { return m_valid; }

    /// The paths of the files opened so far, in their order, once for each opening. If there are
    /// too many between two calls, the object becomes invalid.
    QStringList paths();

private:
    void watch(const QString& directory);

    int m_inotify;
    bool m_valid;
    QHash<int, QString> m_directories;
    QStringList m_paths;
};
