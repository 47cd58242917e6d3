// SPDX-License-Identifier: BSD-3-Clause
#include "libraryrows.h"

#include "measuredprocess.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

namespace {

QStringList selectRows(const QString& path, const QString& statement, const QVariant& value = {})
{
    const QString connection = QStringLiteral("rows");
    QStringList rows;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(path);
        database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!database.open()) {
            giveUp("cannot open a database: " + database.lastError().text().toUtf8());
        }
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.prepare(statement);
        if (value.isValid()) {
            query.addBindValue(value);
        }
        if (!query.exec()) {
            giveUp("cannot read a database: " + query.lastError().text().toUtf8());
        }
        const int columns = query.record().count();
        while (query.next()) {
            QStringList row;
            for (int i = 0; i < columns; ++i) {
                row.append(query.isNull(i) ? QStringLiteral("NULL") : query.value(i).toString());
            }
            rows.append(row.join(QLatin1Char('|')));
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return rows;
}

} // namespace

QStringList libraryRows(const QString& database)
{
    return selectRows(
        database,
        QStringLiteral(
            "SELECT directory.path, directory.scope, parent.path, file.fileName, file.mimeType, "
            "file.displayName, file.modificationTime, file.permissions, file.metadataCurrent, "
            "image.fileId IS NULL, image.dateTaken, image.width, image.height, image.orientation "
            "FROM directory "
            "LEFT JOIN directory AS parent ON parent.id = directory.parentId "
            "LEFT JOIN file ON file.directoryId = directory.id "
            "LEFT JOIN image ON image.fileId = file.id "
            "WHERE directory.path NOT IN ('/usr/share/moodset', '/usr/share/sounds') "
            "ORDER BY directory.path, file.fileName;"));
}

QStringList moodsetRows(const QString& database)
{
    return selectRows(
        database,
        QStringLiteral(
            "SELECT directory.path, file.fileName, moodset.favorite, moodset.homeWallpaper, "
            "moodset.applicationWallpaper, moodset.highlightColor, "
            "moodset.secondaryHighlightColor, moodset.primaryColor, moodset.secondaryColor, "
            "moodset.timestamp, moodset.ringerVolume, moodset.enabledSounds, "
            "moodset.partnerSpace, moodset.version, resource.resourceType, toneDirectory.path, "
            "tone.fileName FROM moodset "
            "JOIN file ON file.id = moodset.fileId "
            "JOIN directory ON directory.id = file.directoryId "
            "LEFT JOIN resource ON resource.fileId = file.id "
            "LEFT JOIN file AS tone ON tone.id = resource.resourceId "
            "LEFT JOIN directory AS toneDirectory ON toneDirectory.id = tone.directoryId "
            "ORDER BY directory.path, file.fileName, resource.resourceType;"));
}

qint64 moodsetId(const QString& database, const QString& directory)
{
    return selectRows(
               database,
               QStringLiteral("SELECT file.id FROM file "
                              "JOIN directory ON directory.id = directoryId "
                              "JOIN moodset ON moodset.fileId = file.id WHERE path = ?;"),
               directory)
        .constFirst()
        .toLongLong();
}

int indexedPictures(const QString& database, const QString& path)
{
    return selectRows(
               database,
               QStringLiteral("SELECT count(*) FROM directory "
                              "JOIN file ON file.directoryId = directory.id "
                              "JOIN image ON image.fileId = file.id WHERE directory.path = ?;"),
               path)
        .constFirst()
        .toInt();
}
