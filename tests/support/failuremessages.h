// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>

/// The four log messages of a statement that failed.
inline QStringList failureMessages(
    const QString& function, const QString& message, const QString& error, QString statement)
{
    statement.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return {function, message, error, QLatin1Char('"') + statement + QLatin1Char('"')};
}

/// The four log messages of a statement that could not be prepared.
inline QStringList prepareFailureMessages(const QString& reason, const QString& statement)
{
    return failureMessages(
        QStringLiteral("QSqlQuery QueryAgent::prepareQuery(const QString&)"),
        QStringLiteral("Failed to prepare query"),
        QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", \"%1\")").arg(reason),
        statement);
}

/// The four log messages of running a statement that could not be prepared.
inline QStringList deadQueryMessages(const QString& function, const QString& message)
{
    return failureMessages(
        function, message,
        QStringLiteral("QSqlError(\"\", \"Driver not loaded\", \"Driver not loaded\")"), QString());
}
