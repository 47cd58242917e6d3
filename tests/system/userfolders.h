// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The folders of a user who has no library yet, for one test.
///
/// While the object lives, this process and the daemons that it starts have that user's folders.
/// All of them are on one file system, so that files can be moved between them at once.
class UserFolders
{
public:
    UserFolders();
    ~UserFolders();
    Q_DISABLE_COPY_MOVE(UserFolders)

    /// False if the folders could not be made.
    bool isValid() const { return m_valid; }

    /// The pictures folder, which exists and is empty at first.
    QString pictures() const;
    /// The path of a file in the pictures folder.
    QString picture(const QString& name) const;

    /// A folder that no daemon watches of its own accord.
    QString elsewhere() const;
    /// The path of a file in that folder.
    QString elsewhere(const QString& name) const;

    /// The folder where a daemon keeps its data.
    QString data() const;

private:
    QString m_root;
    bool m_valid;
};
