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
QString selectPhotos(const QString& tail)
{
    return QStringLiteral("SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, "
                          "file.fileName, file.displayName, file.permissions, image.dateTaken, "
                          "image.width, image.height, image.orientation "
                          "FROM file INNER JOIN directory on file.directoryId = directory.id ")
        + tail;
}

/// The columns after those of a file.
enum Column : int { DateTaken = FileRow::Count, Width, Height, Orientation, Modified };

/// The statements for clients that show pictures.
QString selectWithTime(const QString& tail)
{
    return QStringLiteral("SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, "
                          "file.fileName, file.displayName, file.permissions, image.dateTaken, "
                          "image.width, image.height, image.orientation")
        + FileRow::modificationTimeColumn(true)
        + QStringLiteral(" FROM image INNER JOIN file ON file.id = image.fileId "
                         "INNER JOIN directory ON file.directoryId = directory.id ")
        + tail;
}

QString orderClause(PhotoQueryAgent::Page::Order order)
{
    // The ids tell between pictures of the same moment, so that pages fit together.
    return order == PhotoQueryAgent::Page::OldestFirst
        ? QStringLiteral("ORDER BY image.dateTaken IS NULL, image.dateTaken, image.fileId")
        : QStringLiteral("ORDER BY image.dateTaken DESC, image.fileId DESC");
}

PhotoData* newPhoto(const QSqlQuery& query)
{
    auto* const photo = FileRow::newRecord<PhotoData>(query);
    FileRow::fill(photo, query);
    photo->dateTaken = storedTime(query.value(DateTaken));
    photo->width = query.value(Width).toInt();
    photo->height = query.value(Height).toInt();
    photo->orientation = query.value(Orientation).toInt();
    return photo;
}

Content photoFromRow(const QSqlQuery& query)
{
    return Content(newPhoto(query));
}

Content photoWithTimeFromRow(const QSqlQuery& query)
{
    PhotoData* const photo = newPhoto(query);
    photo->modified = storedMilliseconds(query.value(Modified));
    return Content(photo);
}

} // namespace

PhotoQueryAgent::PhotoQueryAgent(QueryAgentDatabase& database)
    : QueryAgentSpecialization<PhotoData>(database)
{
}

// The statements for one picture name a table that does not exist, so preparing them always fails.
// This is part of the daemon's behaviour.

Content PhotoQueryAgent::queryById(qint64 id)
{
    QSqlQuery query = prepareQuery(selectPhotos(
        QStringLiteral("INNER JOIN photo ON file.id = photo.fileId WHERE file.id = ?;")));
    query.bindValue(0, id);
    return querySinglePhoto(query);
}

Content PhotoQueryAgent::queryByUrl(const QUrl& url)
{
    QSqlQuery query = prepareQueryByUrl(
        url,
        selectPhotos(QStringLiteral("LEFT JOIN photo ON file.id = photo.fileId "
                                    "WHERE directory.path = ? AND file.fileName = ?;")),
        selectPhotos(
            QStringLiteral("LEFT JOIN photo ON file.id = photo.fileId "
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
    QSqlQuery query = prepareQuery(selectPhotos(
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

Content PhotoQueryAgent::queryPhoto(qint64 id)
{
    QSqlQuery query = prepareQuery(selectWithTime(QStringLiteral("WHERE image.fileId = ?;")));
    query.bindValue(0, id);
    if (!query.exec()) {
        warn(query, "Content PhotoQueryAgent::queryPhoto(qint64)", "Failed to query photo");
        return Content();
    }
    if (!query.next()) {
        return Content();
    }
    Content photo = photoWithTimeFromRow(query);
    query.finish();
    return photo;
}

bool PhotoQueryAgent::queryPage(Recipient* recipient, const Page& page)
{
    const QString order = orderClause(page.order);
    const bool isWhole = page.limit < 0 && page.offset <= 0;
    // What a page does not show is left out before the other tables are read.
    QSqlQuery query = prepareQuery(selectWithTime(
        isWhole ? order + QLatin1Char(';')
                : QStringLiteral("WHERE image.fileId IN (SELECT fileId FROM image %1 LIMIT ? "
                                 "OFFSET ?) %1;")
                      .arg(order)));
    if (!isWhole) {
        query.bindValue(0, page.limit);
        query.bindValue(1, page.offset);
    }
    if (!query.exec()) {
        warn(
            query,
            "bool PhotoQueryAgent::queryPage(QueryAgent::Recipient*, const "
            "PhotoQueryAgent::Page&)",
            "Failed to execute photo query");
        return false;
    }
    deliver(query, recipient, photoWithTimeFromRow);
    return true;
}
