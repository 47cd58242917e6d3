// SPDX-License-Identifier: BSD-3-Clause
#include "databaseschema.h"

#include <QVector>

namespace {

/// A table, an index or a trigger.
struct SchemaObject
{
    QString name;
    QString statement;
    /// Removes rows that the unique index would refuse and that were inserted while it was missing.
    /// The first row of a file stays, and the last row of a moodset's resource.
    QString duplicateRemoval = QString();
};

QVector<SchemaObject> tables()
{
    return {
        {QStringLiteral("directory"),
         QStringLiteral("CREATE TABLE directory ("
                        "id INTEGER PRIMARY KEY AUTOINCREMENT, "
                        "parentId INTEGER, "
                        "path TEXT UNIQUE, "
                        "scope INTEGER NOT NULL);")},
        {QStringLiteral("file"),
         QStringLiteral("CREATE TABLE file ("
                        "id INTEGER PRIMARY KEY AUTOINCREMENT, "
                        "directoryId INTEGER NOT NULL, "
                        "mimeType TEXT, "
                        "fileName TEXT, "
                        "displayName TEXT, "
                        "modificationTime DATETIME, "
                        "permissions INTEGER NOT NULL, "
                        "metadataCurrent BOOL);")},
        {QStringLiteral("image"),
         QStringLiteral("CREATE TABLE image ("
                        "fileId INTEGER PRIMARY KEY, "
                        "dateTaken DATETIME, "
                        "width INTEGER, "
                        "height INTEGER, "
                        "orientation INTEGER);")},
        {QStringLiteral("moodset"),
         QStringLiteral("CREATE TABLE moodset ("
                        "fileId INTEGER PRIMARY KEY, "
                        "favorite INTEGER DEFAULT 0, "
                        "homeWallpaper TEXT, "
                        "applicationWallpaper TEXT, "
                        "highlightColor TEXT, "
                        "secondaryHighlightColor TEXT, "
                        "primaryColor TEXT, "
                        "secondaryColor TEXT, "
                        "timestamp TEXT, "
                        "ringerVolume INTEGER, "
                        "enabledSounds INTEGER, "
                        "partnerSpace TEXT, "
                        "version INTEGER);")},
        {QStringLiteral("dorselId"),
         QStringLiteral("CREATE TABLE dorselId ("
                        "fileId INTEGER PRIMARY KEY, "
                        "dorselId TEXT);")},
        {QStringLiteral("download"),
         QStringLiteral("CREATE TABLE download ("
                        "fileId INTEGER PRIMARY KEY, "
                        "source TEXT);")},
        {QStringLiteral("resource"),
         QStringLiteral("CREATE TABLE resource ("
                        "fileId INTEGER, "
                        "resourceType TEXT, "
                        "resourceId INTEGER);")},
    };
}

QVector<SchemaObject> indexes()
{
    return {
        {QStringLiteral("file_directory"),
         QStringLiteral("CREATE UNIQUE INDEX file_directory ON file (directoryId, fileName);"),
         QStringLiteral("DELETE FROM file WHERE id NOT IN "
                        "(SELECT min(id) FROM file GROUP BY directoryId, fileName);")},
        {QStringLiteral("resource_fileId_resourceType"),
         QStringLiteral("CREATE UNIQUE INDEX resource_fileId_resourceType ON resource (fileId, "
                        "resourceType);"),
         QStringLiteral("DELETE FROM resource WHERE rowid NOT IN "
                        "(SELECT max(rowid) FROM resource GROUP BY fileId, resourceType);")},
        {QStringLiteral("resource_file_id"),
         QStringLiteral("CREATE INDEX resource_file_id ON resource (fileId);")},
        {QStringLiteral("resource_resource_id"),
         QStringLiteral("CREATE INDEX resource_resource_id ON resource (resourceId);")},
    };
}

/// These two do all cascading; there are no foreign keys.
QVector<SchemaObject> triggers()
{
    return {
        {QStringLiteral("delete_file_trigger"),
         QStringLiteral(
             "CREATE TRIGGER delete_file_trigger BEFORE DELETE ON file FOR EACH ROW BEGIN "
             "DELETE FROM moodset WHERE fileId = OLD.id; "
             "DELETE FROM image WHERE fileId = OLD.id; "
             "DELETE FROM download WHERE fileId = OLD.id; "
             "DELETE FROM resource WHERE fileId = OLD.id OR resourceId = OLD.id; "
             "DELETE FROM dorselId WHERE fileId = OLD.id; "
             "END;")},
        {QStringLiteral("delete_directory_trigger"),
         QStringLiteral("CREATE TRIGGER delete_directory_trigger BEFORE DELETE ON directory "
                        "FOR EACH ROW BEGIN "
                        "DELETE FROM file WHERE directoryId = OLD.id; "
                        "DELETE FROM directory WHERE parentId = OLD.id; "
                        "END;")},
    };
}

QVector<SchemaObject> objects()
{
    return tables() + indexes() + triggers();
}

} // namespace

QStringList DatabaseSchema::statements()
{
    QStringList statements{QStringLiteral("PRAGMA user_version = %1;").arg(Version)};
    for (const SchemaObject& object : objects()) {
        statements.append(object.statement);
    }
    return statements;
}

QStringList DatabaseSchema::completion(const QStringList& names)
{
    QStringList statements;
    for (const SchemaObject& object : objects()) {
        // The names are compared without case, as SQLite does.
        if (names.contains(object.name, Qt::CaseInsensitive)) {
            continue;
        }
        if (!object.duplicateRemoval.isNull()) {
            statements.append(object.duplicateRemoval);
        }
        statements.append(object.statement);
    }
    return statements;
}
