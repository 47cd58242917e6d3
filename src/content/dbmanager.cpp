// SPDX-License-Identifier: BSD-3-Clause
#include "dbmanager.h"

#include "contentmanager.h"
#include "databaseschema.h"
#include "queryagent.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

const char* const Constructor = "DbManager::DbManager()";

/// How often a file is tried before the daemon goes on with what it has.
constexpr int OpenAttempts = 2;

/// The statement's text comes before the error here, unlike in QueryAgent::warn().
void warnOfQueryTextFirst(const QSqlQuery& query, const char* function, const char* message)
{
    qWarning() << function;
    qWarning() << message;
    qWarning() << query.lastQuery();
    qWarning() << query.lastError();
}

/// The statement's text stands as it is, without quotes.
void warnOfSchemaStatement(const QSqlQuery& query, const char* function, const QString& statement)
{
    qWarning() << function;
    qWarning() << "Initialization failed";
    qWarning().noquote() << statement;
    qWarning() << query.lastError();
}

} // namespace

DbManager* DbManager::instance()
{
    static DbManager manager;
    return &manager;
}

DbManager::DbManager()
{
    const QFileInfo file(filePath());
    const QString path = file.path() + QDir::separator();
    const QDir directory(path);
    bool exists = directory.exists(file.fileName());
    if (!exists && !directory.mkpath(QStringLiteral("."))) {
        qWarning() << "DbManager::DbManager: failed to create directory for db!";
        return;
    }
    setDatabaseName(directory.absoluteFilePath(file.fileName()));
    for (int attempts = OpenAttempts; attempts > 0; --attempts) {
        if (openCurrentSchema(exists)) {
            break;
        }
        deleteFiles(directory, path);
        exists = false;
    }
    qDebug() << Constructor << "Moodset DB Fine...";
    scheduleTranslationUpdate();
}

DbManager::~DbManager()
{
    // The managers' statements die with the connection; they are not used in destructors.
    if (isOpen()) {
        close();
    }
    qDeleteAll(m_managers);
    m_managers.clear();
}

ContentManager*& DbManager::manager(MoodsetContent::Type type)
{
    return m_managers[type];
}

/// Opens the file and brings it to the current schema; false if it is of no use.
bool DbManager::openCurrentSchema(bool exists)
{
    // A file that cannot be opened shows when its version is read.
    open();
    if (!exists && !createDatabaseSchema(*this)) {
        qCritical() << "DbManager::DbManager: Failed to create DB schema. Can't continue!";
    }
    QSqlQuery query(*this);
    // A connection without them still works, if more slowly.
    query.exec(QStringLiteral("PRAGMA temp_store = MEMORY;"));
    query.exec(QStringLiteral("PRAGMA journal_mode = WAL;"));
    if (!query.exec(QStringLiteral("PRAGMA user_version;"))) {
        qWarning() << Constructor;
        qWarning() << "Failed to query user version";
        qWarning() << query.lastError();
        return false;
    }
    const int version = query.next() ? query.value(0).toInt() : 0;
    // An unfinished read would keep the write-ahead log from being reset.
    query.finish();
    return bringToCurrentSchema(version);
}

/// The outcome of a migration does not count: a file that could not be migrated is kept as it is,
/// and the next start tries again.
bool DbManager::bringToCurrentSchema(int version)
{
    switch (version) {
    case 7:
        updateSchema_v7to8();
        updateSchema_v8to10();
        return true;
    case 8:
    case 9:
        updateSchema_v8to10();
        return true;
    case DatabaseSchema::Version:
        return true;
    default:
        qWarning() << "Database version outdated or non-existent";
        return false;
    }
}

void DbManager::deleteFiles(QDir directory, const QString& path)
{
    qWarning() << Constructor << "Nuking moodset database due previous errors!";
    qWarning() << "Delete: " << path;
    const QString name = QFileInfo(databaseName()).fileName();
    close();
    // A file that cannot be removed shows at the next attempt.
    directory.remove(name);
    directory.remove(name + QStringLiteral("-shm"));
    directory.remove(name + QStringLiteral("-wal"));
}

bool DbManager::createDatabaseSchema(const QSqlDatabase& database)
{
    bool success = true;
    QSqlQuery query(database);
    for (const QString& statement : DatabaseSchema::statements()) {
        if (!query.exec(statement)) {
            success = false;
            warnOfSchemaStatement(
                query, "bool DbManager::createDatabaseSchema(const QSqlDatabase&)", statement);
        }
    }
    query.finish();
    return success;
}

bool DbManager::updateSchema_v7to8()
{
    return migrate(
        "bool DbManager::updateSchema_v7to8()", "Updating database schema from version 7 to 8!",
        QStringLiteral("ALTER TABLE moodset ADD COLUMN partnerSpace TEXT;"), QStringLiteral("8"));
}

bool DbManager::updateSchema_v8to10()
{
    return migrate(
        "bool DbManager::updateSchema_v8to10()", "Updating database schema from version 8 to 10!",
        QStringLiteral("ALTER TABLE moodset ADD COLUMN version INTEGER;"), QStringLiteral("10"));
}

bool DbManager::migrate(
    const char* function, const char* note, const QString& alteration, const QString& version)
{
    qDebug() << function << note;
    QSqlQuery query(*this);
    if (!query.exec(alteration)) {
        warnOfSchemaStatement(query, function, alteration);
        query.finish();
        return false;
    }
    query.finish();
    return resetMoodsetsForReparsing() && updateSchemaVersion(version);
}

bool DbManager::resetMoodsetsForReparsing()
{
    QSqlQuery query(*this);
    const bool success =
        query.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 "
                                  "WHERE mimeType=\"application/x-zavro-moodset\";"));
    if (!success) {
        warnOfQueryTextFirst(
            query, "bool DbManager::resetMoodsetsForReparsing()",
            "Failed to reset moodsets for reparsing!");
    }
    query.finish();
    return success;
}

bool DbManager::updateSchemaVersion(const QString& version)
{
    const char* const function = "bool DbManager::updateSchemaVersion(const QString&)";
    const QString written = version.isEmpty() ? QString::number(DatabaseSchema::Version) : version;
    QSqlQuery query(*this);
    const bool success = query.exec(QStringLiteral("PRAGMA user_version=%1;").arg(written));
    if (success) {
        query.finish();
        qDebug() << function << "Updated moodset database to version: " << written;
    } else {
        warnOfQueryTextFirst(query, function, "Failed to update version!");
        query.finish();
    }
    return success;
}

/// Display names in packaged content are translated, so they are read again in a new locale.
void DbManager::scheduleTranslationUpdate()
{
    // A local object, so that the value is on the disk before a signal can end the process.
    QSettings settings(QStringLiteral("Zavro"), QStringLiteral("moodsetd"));
    const QString key = QStringLiteral("locale");
    const QString locale = QLocale().name();
    if (settings.value(key).toString() == locale) {
        return;
    }
    settings.setValue(key, locale);

    // 2 is the scope of packaged content, FileManager::RemovalsOnly.
    constexpr int packagedScope = 2;
    QSqlQuery query(*this);
    if (!query.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE directoryId IN "
                                   "( SELECT id FROM directory WHERE scope = %1);")
                        .arg(packagedScope))) {
        QueryAgent::warn(query, Constructor, "Failed to schedule a translation update");
    }
}
