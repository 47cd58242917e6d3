// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// Statements that make every commit fail that contains a kind of change: `operation` is "INSERT",
/// "UPDATE" or "DELETE". The transaction stays open after this failure, unlike after errors for
/// which SQLite rolls back by itself.
inline QStringList refuseCommit(const QString& operation, const QString& table)
{
    return {
        QStringLiteral("PRAGMA foreign_keys = ON;"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS never (id INTEGER PRIMARY KEY);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS promise "
                       "(id INTEGER REFERENCES never (id) DEFERRABLE INITIALLY DEFERRED);"),
        QStringLiteral("CREATE TRIGGER refuse_commit AFTER %1 ON %2 "
                       "BEGIN INSERT INTO promise VALUES (1); END;")
            .arg(operation, table)};
}

/// The statement that makes commits possible again.
inline QString allowCommit()
{
    return QStringLiteral("DROP TRIGGER refuse_commit;");
}

/// The warning about such a commit.
inline QString refusedCommitWarning(const QString& function)
{
    return function
        + QStringLiteral(" Failed to commit transaction QSqlError(\"\", \"Unable to commit "
                         "transaction\", \"FOREIGN KEY constraint failed\")");
}
