// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <libraryreader.h>

/// Folders that the daemon is stuck with: it keeps their rows as they are, at every start.
struct StuckFolders
{
    struct Unscanned
    {
        /// The folder whose scan fails, with all that is in it.
        QString parent;
        /// The folder in it that makes it fail.
        QString folder;
    };

    QVector<Unscanned> unscanned;
    /// Folders whose parent has gone from the library, and which so belong to nothing.
    QStringList leftOver;
};

/// A folder that is followed adds each folder in it as a child of its own. Where there is one of
/// that path already that is not its child, this fails, and the scan with it.
StuckFolders findStuckFolders(const QVector<LibraryReader::Directory>& directories);
