// SPDX-License-Identifier: BSD-3-Clause
#include "photoqueryagent.h"

#include "filerow.h"
#include "storedtime.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

namespace {

/// All statements for pictures begin with this.
QString select(const QString& tail)
{
    return QStringLiteral("SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, "
                          "file.fileName, file.displayName, file.permissions, image.dateTaken, "
                          "image.width, image.height, image.orientation "
                          "FROM file INNER JOIN directory on file.directoryId = directory.id ")
        + tail;
}

/// The columns that follow those of a file.
enum Column : int { DateTaken = FileRow::Count, Width, Height, Orientation };

Content photoFromRow(const QSqlQuery& query)
{
    auto* const photo = FileRow::newRecord<PhotoData>(query);
    FileRow::fill(photo, query);
    photo->dateTaken = storedTime(query.value(DateTaken));
    photo->width = query.value(Width).toInt();
    photo->height = query.value(Height).toInt();
    photo->orientation = query.value(Orientation).toInt();
    return Content(photo);
}

} // namespace

PhotoQueryAgent::PhotoQueryAgent(QueryAgentDatabase& database)
    : QueryAgentSpecialization<PhotoData>(database)
{
}

// The statements for one picture name a table that the database does not have, so they can never be
// prepared. That is as it has to be.

Content PhotoQueryAgent::queryById(qint64 id)
{
    QSqlQuery query = prepareQuery(
        select(QStringLiteral("INNER JOIN photo ON file.id = photo.fileId WHERE file.id = ?;")));
    query.bindValue(0, id);
    return querySinglePhoto(query);
}

Content PhotoQueryAgent::queryByUrl(const QUrl& url)
{
    QSqlQuery query = prepareQueryByUrl(
        url,
        select(QStringLiteral("LEFT JOIN photo ON file.id = photo.fileId "
                              "WHERE directory.path = ? AND file.fileName = ?;")),
        select(QStringLiteral("LEFT JOIN photo ON file.id = photo.fileId "
                              "WHERE file.id IN (SELECT fileId FROM download WHERE source = ?);")));
    return querySinglePhoto(query);
}

Content PhotoQueryAgent::querySinglePhoto(QSqlQuery& query)
{
    Content photo;
    if (!query.exec()) {
        warn(
            query, "Content PhotoQueryAgent::querySinglePhoto(QSqlQuery&)",
            "Failed to query photo");
        return photo;
    }
    if (query.next()) {
        photo = photoFromRow(query);
        query.finish();
    }
    return photo;
}

bool PhotoQueryAgent::query(Recipient* recipient, const Parameters& parameters)
{
    Q_UNUSED(parameters)
    QSqlQuery query = prepareQuery(select(
        QStringLiteral("INNER JOIN image on file.id = image.fileId ORDER BY image.dateTaken;")));
    if (!query.exec()) {
        warn(
            query,
            "virtual bool PhotoQueryAgent::query(QueryAgent::Recipient*, "
            "const QueryAgent::Parameters&)",
            "Failed to execute photo query");
        return false;
    }
    deliver(query, recipient, photoFromRow);
    return true;
}
