// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The log lines that a start of the database is made up of, as DatabaseHome::start() gives them.
namespace StartLog {

/// The last line of every start, except for those of a failed translation update.
QStringList fine();

/// An exec() on a connection that is not open, as Qt tells it.
QStringList notOpen();

/// A statement that failed while the schema was made or migrated.
QStringList initializationFailed(
    const QString& function, const QString& statement, const QString& error);

/// The schema's version could not be read.
QStringList versionUnknown(const QString& error);

/// A file with a version that has no migration.
QStringList versionOutdated();

/// The database in `folder`, a path with a "/" at its end, is deleted.
QStringList deletion(const QString& folder);

/// The update after a change of the locale failed.
QStringList translationUpdateFailed(const QString& error);

/// An error as it stands in the log.
QString error(const QString& number, const QString& action, const QString& reason);

} // namespace StartLog
