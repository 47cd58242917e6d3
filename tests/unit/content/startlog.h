// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The log lines of a start of the database, as DatabaseHome::start() returns them.
namespace StartLog {

/// The last line of every start, except for those of a failed translation update.
QStringList fine();

/// The error of an exec() on a connection that is not open, as Qt reports it.
QStringList notOpen();

/// The lines for a statement that failed while the schema was made or migrated.
QStringList initializationFailed(
    const QString& function, const QString& statement, const QString& error);

/// The lines for a schema version that could not be read.
QStringList versionUnknown(const QString& error);

/// The line for a file whose version has no migration.
QStringList versionOutdated();

/// The lines for the deletion of the database in `folder`, whose path ends with a "/".
QStringList deletion(const QString& folder);

/// The lines for a failed update after a change of the locale.
QStringList translationUpdateFailed(const QString& error);

/// An error as the log shows it.
QString error(const QString& number, const QString& action, const QString& reason);

} // namespace StartLog
