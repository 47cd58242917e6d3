// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <libraryreader.h>

/// Folders whose rows the daemon can no longer bring up to date, not even at a start.
struct StuckFolders
{
    struct Unscanned
    {
        /// The folder that cannot be scanned, with everything below it.
        QString parent;
        /// The folder inside that makes the scan fail.
        QString folder;
    };

    QVector<Unscanned> unscanned;
    /// Folders whose parent is no longer in the library. No scan reaches them.
    QStringList leftOver;
};

/// The scan of a followed folder adds each folder inside as a child. If there is already a row with
/// this path that is not a child, adding it fails, and so does the scan.
StuckFolders findStuckFolders(const QVector<LibraryReader::Directory>& directories);
