// SPDX-License-Identifier: BSD-3-Clause
#include "startlog.h"

QStringList StartLog::fine()
{
    return {QStringLiteral("debug: DbManager::DbManager() Moodset DB Fine...")};
}

QStringList StartLog::notOpen()
{
    return {QStringLiteral("warning: QSqlQuery::exec: database not open")};
}

QStringList StartLog::initializationFailed(
    const QString& function, const QString& statement, const QString& error)
{
    return {
        QStringLiteral("warning: ") + function, QStringLiteral("warning: Initialization failed"),
        QStringLiteral("warning: ") + statement, QStringLiteral("warning: ") + error};
}

QStringList StartLog::versionUnknown(const QString& error)
{
    return {
        QStringLiteral("warning: DbManager::DbManager()"),
        QStringLiteral("warning: Failed to query user version"),
        QStringLiteral("warning: ") + error};
}

QStringList StartLog::versionOutdated()
{
    return {QStringLiteral("warning: Database version outdated or non-existent")};
}

QStringList StartLog::deletion(const QString& folder)
{
    return {
        QStringLiteral("warning: DbManager::DbManager() Nuking moodset database due previous "
                       "errors!"),
        QStringLiteral("warning: Delete:  \"%1\"").arg(folder)};
}

QStringList StartLog::translationUpdateFailed(const QString& error)
{
    return {
        QStringLiteral("warning: DbManager::DbManager()"),
        QStringLiteral("warning: Failed to schedule a translation update"),
        QStringLiteral("warning: ") + error,
        QStringLiteral("warning: \"UPDATE file SET metadataCurrent = 0 WHERE directoryId IN "
                       "( SELECT id FROM directory WHERE scope = 2);\"")};
}

QString StartLog::error(const QString& number, const QString& action, const QString& reason)
{
    return QStringLiteral("QSqlError(\"%1\", \"%2\", \"%3\")").arg(number, action, reason);
}
