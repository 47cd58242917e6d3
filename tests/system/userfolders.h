// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The directories of a user without a library, for one test.
///
/// While the object lives, this process and the daemons that it starts use these directories. All
/// of them are on one file system, so files can be moved between them.
class UserFolders
{
public:
    UserFolders();
    ~UserFolders();
    Q_DISABLE_COPY_MOVE(UserFolders)

    /// False if the directories could not be made.
    bool isValid() const { return m_valid; }

    /// The pictures folder, which exists and is empty at first.
    QString pictures() const;
    /// The path of a file in the pictures folder.
    QString picture(const QString& name) const;

    /// A directory that no daemon follows by itself.
    QString elsewhere() const;
    /// The path of a file in that directory.
    QString elsewhere(const QString& name) const;

    /// The directory where a daemon keeps its data.
    QString data() const;

private:
    QString m_root;
    bool m_valid;
};
