// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QJsonObject>
#include <QString>

class MoodsetService;

/// What is in the database alone, as a file: the moodsets with all that users can edit, and where
/// downloaded pictures came from.
namespace EditsBackup {

/// What there is to save. Sets fault to why it cannot be read, or to an empty text.
QJsonObject collect(QString* fault);

/// Saves it to a file that is readable for its owner alone. Returns why it cannot, in one line, or
/// an empty text.
QString save(const QJsonObject& edits, const QString& path);

/// Writes the backup to a file that is readable for its owner alone. The result counts what is in
/// it.
Outcome write(const QString& path);

/// Brings back what a backup holds: moodsets that are missing are made of their files, and edited
/// as they were, and favourites are listed in their order. What cannot be brought back is listed in
/// the result, and is a failure. Sets isTried to whether the daemon was there for all of it, so
/// that there is no use in a second attempt.
Outcome restore(const MoodsetService& service, const QString& path, bool* isTried);

/// The result of restore() where there was nothing to bring back.
QJsonObject noneRestored();

} // namespace EditsBackup
