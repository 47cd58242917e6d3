// SPDX-License-Identifier: BSD-3-Clause
#include "dbmanager.h"

#include "contentlog.h"
#include "contentmanager.h"
#include "databaseschema.h"
#include "errorwarning.h"
#include "libraryreader.h"
#include "queryagent.h"

#include <freedescriptors.h>

#include <QDir>
#include <QLocale>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

const char* const Constructor = "DbManager::DbManager()";

const char* const SchemaFailure =
    "DbManager::DbManager: Failed to create DB schema. Can't continue!";

/// How often to try the file before the daemon continues with what it has.
constexpr int OpenAttempts = 2;

/// For the database, its log and its index, and for the directory while a file in it is made.
constexpr int DatabaseDescriptors = 4;

/// Unlike QueryAgent::warn(), this logs the statement's text before the error.
void warnOfQueryTextFirst(const QSqlQuery& query, const char* function, const char* message)
{
    qCWarning(contentLog) << function;
    qCWarning(contentLog) << message;
    qCWarning(contentLog) << query.lastQuery();
    qCWarning(contentLog) << query.lastError();
}

/// The statement's text is logged without quotes.
void warnOfSchemaStatement(const QSqlQuery& query, const char* function, const QString& statement)
{
    qCWarning(contentLog) << function;
    qCWarning(contentLog) << "Initialization failed";
    qCWarning(contentLog).noquote() << statement;
    qCWarning(contentLog) << query.lastError();
}

/// Runs all statements, even after one has failed. False if any has failed.
bool execSchemaStatements(
    const QSqlDatabase& database, const char* function, const QStringList& statements)
{
    bool success = true;
    QSqlQuery query(database);
    for (const QString& statement : statements) {
        if (!query.exec(statement)) {
            success = false;
            warnOfSchemaStatement(query, function, statement);
        }
    }
    query.finish();
    return success;
}

} // namespace

DbManager* DbManager::instance()
{
    static DbManager manager;
    return &manager;
}

DbManager::DbManager()
{
    const QDir directory(directoryPath());
    bool exists = directory.exists(fileName());
    if (!exists && !directory.mkpath(QStringLiteral("."))) {
        qCWarning(contentLog) << "DbManager::DbManager: failed to create directory for db!";
        return;
    }
    setDatabaseName(directory.absoluteFilePath(fileName()));
    for (int attempts = OpenAttempts; attempts > 0; --attempts) {
        const bool canOpen = areDescriptorsFree(DatabaseDescriptors);
        if (openCurrentSchema(exists)) {
            break;
        }
        // That says nothing against the file, which the next start can open.
        if (!canOpen) {
            qCWarning(contentLog) << Constructor << "Too few file descriptors are left for"
                                  << databaseName();
            break;
        }
        deleteFiles(directory);
        exists = false;
    }
    qCDebug(contentLog) << Constructor << "Moodset DB Fine...";
    scheduleTranslationUpdate();
}

DbManager::~DbManager()
{
    // The managers' statements become invalid with the connection. Destructors do not use them.
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

/// Opens the file and upgrades it to the current schema. False if the file is unusable.
bool DbManager::openCurrentSchema(bool exists)
{
    // If the file cannot be opened, reading its version fails.
    open();
    if (!exists && !createDatabaseSchema(*this)) {
        qCCritical(contentLog) << SchemaFailure;
    }
    QSqlQuery query(*this);
    // If this fails, the connection still works, but more slowly.
    query.exec(QStringLiteral("PRAGMA temp_store = MEMORY;"));
    query.exec(QStringLiteral("PRAGMA journal_mode = WAL;"));
    if (!query.exec(QStringLiteral("PRAGMA user_version;"))) {
        warnOfError(query.lastError(), Constructor, "Failed to query user version");
        return false;
    }
    const int version = query.next() ? query.value(0).toInt() : 0;
    // While a read is unfinished, SQLite cannot reset the write-ahead log.
    query.finish();
    if (exists && version == DatabaseSchema::Version) {
        completeDatabaseSchema();
    }
    return bringToCurrentSchema(version);
}

/// Makes what a file of the current version lacks. The version is the first thing that is written
/// into a new file, and then the process can be killed or the disk can be full. What cannot be made
/// now is tried again at the next start.
void DbManager::completeDatabaseSchema()
{
    const char* const function = "void DbManager::completeDatabaseSchema()";
    QSqlQuery query(*this);
    if (!query.exec(QStringLiteral("SELECT name FROM sqlite_master;"))) {
        QueryAgent::warn(query, function, "Failed to query the schema");
        return;
    }
    QStringList names;
    while (query.next()) {
        names.append(query.value(0).toString());
    }
    query.finish();
    if (!execSchemaStatements(*this, function, DatabaseSchema::completion(names))) {
        qCCritical(contentLog) << SchemaFailure;
    }
}

/// Ignores whether a migration succeeded: if it failed, the file stays as it is, and the next start
/// tries again.
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
        qCWarning(contentLog) << "Database version outdated or non-existent";
        return false;
    }
}

void DbManager::deleteFiles(QDir directory)
{
    qCWarning(contentLog) << Constructor << "Nuking moodset database due previous errors!";
    qCWarning(contentLog) << "Delete: " << directoryPath();
    close();
    // If the file cannot be removed, the next attempt fails.
    directory.remove(fileName());
    directory.remove(fileName() + QStringLiteral("-shm"));
    directory.remove(fileName() + QStringLiteral("-wal"));
}

bool DbManager::createDatabaseSchema(const QSqlDatabase& database)
{
    return execSchemaStatements(
        database, "bool DbManager::createDatabaseSchema(const QSqlDatabase&)",
        DatabaseSchema::statements());
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
    qCDebug(contentLog) << function << note;
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
        qCDebug(contentLog) << function << "Updated moodset database to version: " << written;
    } else {
        warnOfQueryTextFirst(query, function, "Failed to update version!");
        query.finish();
    }
    return success;
}

/// Packaged content has translated display names, so it is read again when the locale has changed.
void DbManager::scheduleTranslationUpdate()
{
    // The object is local, so the value is on the disk before a signal can end the process.
    QSettings settings(QStringLiteral("Zavro"), QStringLiteral("moodsetd"));
    const QString key = QStringLiteral("locale");
    const QString locale = QLocale().name();
    if (settings.value(key).toString() == locale) {
        return;
    }
    settings.setValue(key, locale);

    // The directories of packages have this scope.
    const int packagedScope = LibraryReader::Directory::RemovalsOnly;
    QSqlQuery query(*this);
    if (!query.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE directoryId IN "
                                   "( SELECT id FROM directory WHERE scope = %1);")
                        .arg(packagedScope))) {
        QueryAgent::warn(query, Constructor, "Failed to schedule a translation update");
    }
}
