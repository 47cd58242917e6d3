// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetqueryagent.h"

#include "filerow.h"
#include "moodsetrow.h"
#include "storedtime.h"

#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

namespace {

const char* const SingleFunction = "Content MoodsetQueryAgent::querySingleMoodset(QSqlQuery&)";
const char* const ListFunction = "virtual bool MoodsetQueryAgent::query(QueryAgent::Recipient*, "
                                 "const QueryAgent::Parameters&)";

/// A statement for one moodset; `tail` is its WHERE clause.
QString selectMoodsets(const QString& tail)
{
    return QStringLiteral(
               "SELECT file.id, directory.path || '/' || file.fileName AS filePath, file.mimeType, "
               "file.fileName, file.permissions, file.displayName, dorselid.dorselId, "
               "moodset.favorite, moodset.homeWallpaper, moodset.applicationWallpaper, "
               "moodset.highlightColor, moodset.secondaryHighlightColor, moodset.primaryColor, "
               "moodset.secondaryColor, moodset.ringerVolume, moodset.enabledSounds, "
               "moodset.partnerSpace, moodset.version "
               "FROM file INNER JOIN directory on file.directoryId = directory.id "
               "INNER JOIN moodset ON file.id = moodset.fileId "
               "LEFT OUTER JOIN dorselid ON moodset.fileId = dorselid.fileId ")
        + tail;
}

QString selectResources()
{
    return QStringLiteral(
        "SELECT resource.fileId, resource.resourceType, directory.path || '/' || file.fileName, "
        "file.fileName, file.displayName "
        "FROM resource INNER JOIN file ON resource.resourceId = file.id "
        "INNER JOIN directory on file.directoryId = directory.id WHERE resource.fileId = ?");
}

/// Makes the table that fixes the order of a listing: its rowids are in this order.
QString createTable(const QString& table, int favoriteFilter)
{
    const QString tail = favoriteFilter == QueryAgent::Parameters::AllMoodsets
        ? QStringLiteral("\nORDER BY moodset.favorite DESC, moodset.timestamp ASC;")
        : QStringLiteral("\nWHERE moodset.favorite = ? ORDER BY moodset.timestamp ASC;");
    return QStringLiteral("CREATE TEMPORARY TABLE %1 AS SELECT * FROM moodset").arg(table) + tail;
}

QString selectListing(const QString& table, bool withModificationTime)
{
    const QString columns = QStringLiteral(
        "SELECT file.id, directory.path || '/' || file.fileName AS filePath, file.mimeType, "
        "file.fileName, file.permissions, file.displayName, dorselid.dorselId, %1.favorite, "
        "%1.homeWallpaper, %1.applicationWallpaper, %1.highlightColor, "
        "%1.secondaryHighlightColor, %1.primaryColor, %1.secondaryColor, %1.ringerVolume, "
        "%1.enabledSounds, %1.partnerSpace, %1.version");
    const QString tables = QStringLiteral(
        " FROM %1 INNER JOIN file ON %1.fileId = file.id "
        "INNER JOIN directory on file.directoryId = directory.id "
        "LEFT OUTER JOIN dorselid ON %1.fileId = dorselid.fileId ORDER BY %1.rowid;");
    return (columns + FileRow::modificationTimeColumn(withModificationTime) + tables).arg(table);
}

QString selectListingResources(const QString& table)
{
    return QStringLiteral(
               "SELECT resource.fileId, resource.resourceType, directory.path || '/' || "
               "file.fileName, "
               "file.fileName, file.displayName "
               "FROM %1 INNER JOIN resource ON %1.fileId = resource.fileId "
               "INNER JOIN file ON resource.resourceId = file.id "
               "INNER JOIN directory on file.directoryId = directory.id ORDER BY %1.rowid;")
        .arg(table);
}

Content moodsetFromRow(const QSqlQuery& query)
{
    auto* const moodset = new MoodsetData(
        query.value(0).toLongLong(), QUrl::fromLocalFile(query.value(1).toString()));
    moodset->mimeType = query.value(2).toString();
    moodset->fileName = query.value(3).toString();
    moodset->permissions = query.value(4).toInt();
    moodset->displayName = query.value(5).toString();
    moodset->dorselId = query.value(6).toString();
    MoodsetRow::fillLook(moodset, query, 7);
    return Content(moodset);
}

Content moodsetWithTimeFromRow(const QSqlQuery& query)
{
    constexpr int column = 18;
    Moodset moodset(moodsetFromRow(query));
    moodset->modified = storedMilliseconds(query.value(column));
    return moodset;
}

} // namespace

/// The resources of moodsets, in the order of the moodsets that they belong to.
struct MoodsetQueryAgent::ResourceCursor
{
    QSqlQuery query;
    /// The moodset of the query's present row, or 0 if there is no row.
    qint64 fileId = 0;

    void next() { fileId = query.next() ? query.value(0).toLongLong() : 0; }
};

MoodsetQueryAgent::MoodsetQueryAgent(QueryAgentDatabase& database)
    : QueryAgentSpecialization<MoodsetData>(database)
{
}

Content MoodsetQueryAgent::queryById(qint64 id)
{
    QSqlQuery query = prepareQuery(selectMoodsets(QStringLiteral("WHERE file.id = ?;")));
    query.bindValue(0, id);
    return querySingleMoodset(query);
}

Content MoodsetQueryAgent::queryByUrl(const QUrl& url)
{
    QSqlQuery query = prepareQueryByUrl(
        url, selectMoodsets(QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;")),
        selectMoodsets(
            QStringLiteral("WHERE file.id IN (SELECT fileId FROM download WHERE source = ?);")));
    return querySingleMoodset(query);
}

Content MoodsetQueryAgent::querySingleMoodset(QSqlQuery& query)
{
    if (!query.exec()) {
        warn(query, SingleFunction, "Failed to query moodset");
        return Content();
    }
    if (!query.next()) {
        return Content();
    }
    Content moodset = moodsetFromRow(query);
    query.finish();

    ResourceCursor cursor{prepareQuery(selectResources())};
    cursor.query.bindValue(0, moodset.data()->id);
    if (!cursor.query.exec()) {
        // The warning names the moodset's query, not the one of the resources.
        warn(query, SingleFunction, "Failed to execute resource query");
        return moodset;
    }
    cursor.next();
    readResources(&cursor, &moodset, 1);
    cursor.query.finish();
    return moodset;
}

/// Gives each moodset the resources that follow in the cursor. If a resource belongs to a moodset
/// that is not in `contents`, the cursor stays there for good.
void MoodsetQueryAgent::readResources(ResourceCursor* cursor, Content* contents, int count)
{
    for (int i = 0; i < count && cursor->fileId != 0; ++i) {
        if (cursor->fileId != contents[i].data()->id) {
            continue;
        }
        Moodset moodset(contents[i]);
        // Only `moodset` holds the record now, so writing through it does not copy the record.
        contents[i] = Content();
        while (cursor->fileId == moodset.constData()->id) {
            moodset->resources.insert(
                cursor->query.value(1).toString(), MoodsetRow::resource(cursor->query, 2));
            cursor->next();
        }
        contents[i] = moodset;
    }
}

bool MoodsetQueryAgent::query(Recipient* recipient, const Parameters& parameters)
{
    const QString table = QStringLiteral("moodset_") + threadId();
    QSqlQuery create = prepareQuery(createTable(table, parameters.favoriteFilter));
    if (parameters.favoriteFilter != Parameters::AllMoodsets) {
        create.bindValue(0, parameters.favoriteFilter == Parameters::Favorites);
    }
    if (!create.exec()) {
        warn(create, ListFunction, "Failed to create moodset table");
        return false;
    }
    create.finish();
    list(recipient, table, parameters.modificationTimes);
    QSqlQuery drop = prepareQuery(QStringLiteral("DROP TABLE %1").arg(table));
    if (!drop.exec()) {
        warn(drop, ListFunction, "Failed to drop temporary moodset table");
    }
    return true;
}

/// Delivers the moodsets of the temporary table. A failure is reported and ends the listing.
void MoodsetQueryAgent::list(Recipient* recipient, const QString& table, bool withModificationTimes)
{
    QSqlQuery listing = prepareQuery(selectListing(table, withModificationTimes));
    ResourceCursor cursor{prepareQuery(selectListingResources(table))};
    if (!listing.exec()) {
        warn(listing, ListFunction, "Failed to execute moodset query");
        return;
    }
    if (cursor.query.exec()) {
        cursor.next();
        deliver(
            listing, recipient, withModificationTimes ? moodsetWithTimeFromRow : moodsetFromRow,
            [&cursor](QVector<Content>* batch) {
                readResources(&cursor, batch->data(), batch->size());
            });
    } else {
        // The warning names the query of the listing, not the one of the resources.
        warn(listing, ListFunction, "Failed to execute resource query");
    }
    // SQLite cannot drop the table while a query still has a row of it.
    listing.finish();
    cursor.query.finish();
}
