// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <libraryfile.h>
#include <libraryreader.h>

#include <QString>
#include <QVector>

/// The size of `photo`, or one of the words "waiting", "unreadable" and "unknown".
QString displaySize(const LibraryFile& photo);

/// When `photo` was taken, in the form of the locale, or "-".
QString displayTaken(const LibraryFile& photo);

/// The orientation of `photo`, or "-".
QString displayOrientation(const LibraryFile& photo);

/// A table of photos, with a line of titles and one line for each photo. Columns are as wide as
/// their content. Empty if there are no photos.
/// `terminalColumns` has the same meaning as for textTable().
QString photoTable(
    const QVector<LibraryFile>& photos, const QString& folder, int terminalColumns = 0);

/// One line with the numbers of what is in the database.
QString summaryLine(const LibraryReader::Counts& counts, const QVector<LibraryFile>& photos);
