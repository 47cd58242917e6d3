// SPDX-License-Identifier: BSD-3-Clause
#include "databaseschema.h"

namespace {

QStringList tables()
{
    return {
        QStringLiteral("CREATE TABLE directory ("
                       "id INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "parentId INTEGER, "
                       "path TEXT UNIQUE, "
                       "scope INTEGER NOT NULL);"),
        QStringLiteral("CREATE TABLE file ("
                       "id INTEGER PRIMARY KEY AUTOINCREMENT, "
                       "directoryId INTEGER NOT NULL, "
                       "mimeType TEXT, "
                       "fileName TEXT, "
                       "displayName TEXT, "
                       "modificationTime DATETIME, "
                       "permissions INTEGER NOT NULL, "
                       "metadataCurrent BOOL);"),
        QStringLiteral("CREATE TABLE image ("
                       "fileId INTEGER PRIMARY KEY, "
                       "dateTaken DATETIME, "
                       "width INTEGER, "
                       "height INTEGER, "
                       "orientation INTEGER);"),
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
                       "version INTEGER);"),
        QStringLiteral("CREATE TABLE dorselId ("
                       "fileId INTEGER PRIMARY KEY, "
                       "dorselId TEXT);"),
        QStringLiteral("CREATE TABLE download ("
                       "fileId INTEGER PRIMARY KEY, "
                       "source TEXT);"),
        QStringLiteral("CREATE TABLE resource ("
                       "fileId INTEGER, "
                       "resourceType TEXT, "
                       "resourceId INTEGER);"),
    };
}

QStringList indexes()
{
    return {
        QStringLiteral("CREATE UNIQUE INDEX file_directory ON file (directoryId, fileName);"),
        QStringLiteral(
            "CREATE UNIQUE INDEX resource_fileId_resourceType ON resource (fileId, resourceType);"),
        QStringLiteral("CREATE INDEX resource_file_id ON resource (fileId);"),
        QStringLiteral("CREATE INDEX resource_resource_id ON resource (resourceId);"),
    };
}

/// All cascading is done by these two; there are no foreign keys.
QStringList triggers()
{
    return {
        QStringLiteral(
            "CREATE TRIGGER delete_file_trigger BEFORE DELETE ON file FOR EACH ROW BEGIN "
            "DELETE FROM moodset WHERE fileId = OLD.id; "
            "DELETE FROM image WHERE fileId = OLD.id; "
            "DELETE FROM download WHERE fileId = OLD.id; "
            "DELETE FROM resource WHERE fileId = OLD.id OR resourceId = OLD.id; "
            "DELETE FROM dorselId WHERE fileId = OLD.id; "
            "END;"),
        QStringLiteral("CREATE TRIGGER delete_directory_trigger BEFORE DELETE ON directory "
                       "FOR EACH ROW BEGIN "
                       "DELETE FROM file WHERE directoryId = OLD.id; "
                       "DELETE FROM directory WHERE parentId = OLD.id; "
                       "END;"),
    };
}

} // namespace

QStringList DatabaseSchema::statements()
{
    return QStringList(QStringLiteral("PRAGMA user_version = %1;").arg(Version)) + tables()
        + indexes() + triggers();
}
