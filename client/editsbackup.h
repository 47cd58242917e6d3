// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QJsonObject>
#include <QString>

class MoodsetService;

/// A file with the data that exist only in the database: the moodsets, with everything that users
/// can edit, and the addresses of downloaded pictures.
namespace EditsBackup {

/// Reads the data to save. Sets `fault` to the reason if they cannot be read, and otherwise to an
/// empty text.
QJsonObject collect(QString* fault);

/// Saves the data to a file that only its owner can read. Returns the reason of a failure, in one
/// line, or an empty text.
QString save(const QJsonObject& edits, const QString& path);

/// Writes the backup to a file that only its owner can read. The result has the numbers of what was
/// saved.
Outcome write(const QString& path);

/// Restores a backup: makes missing moodsets from their files, repeats the edits, and restores the
/// order of the favourites. The command fails if something cannot be restored, and the error names
/// it. Sets `isTried` to true if the daemon ran all the time; then a second attempt would fail in
/// the same way.
Outcome restore(const MoodsetService& service, const QString& path, bool* isTried);

/// The result of restore() if there is nothing to restore.
QJsonObject noneRestored();

} // namespace EditsBackup
