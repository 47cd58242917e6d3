// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// All that a database holds of directories, files and pictures, a line for each file, whatever
/// the ids and the order in which the rows were written, except for the install directories
/// themselves, which the daemon follows whatever pictures there are. Ends this process if it cannot
/// be read.
QStringList libraryRows(const QString& database);

/// The number of pictures with an `image` row in the directory at `path`.
int indexedPictures(const QString& database, const QString& path);

/// All that a database holds of moodsets and their tones, a line for each tone, in the same manner.
QStringList moodsetRows(const QString& database);

/// The id of the only moodset whose file is in `directory`, which must be there.
qint64 moodsetId(const QString& database, const QString& directory);
