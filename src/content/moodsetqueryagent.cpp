// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetqueryagent.h"

#include "colorstring.h"

#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

namespace {

const char* const SingleFunction = "Content MoodsetQueryAgent::querySingleMoodset(QSqlQuery&)";
const char* const ListFunction = "virtual bool MoodsetQueryAgent::query(QueryAgent::Recipient*, "
                                 "const QueryAgent::Parameters&)";

/// A statement for one moodset; the tail is its WHERE clause.
QString select(const QString& tail)
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

/// Makes the table that fixes a listing's order by its rowid.
QString createTable(const QString& table, int favoriteFilter)
{
    const QString tail = favoriteFilter == QueryAgent::Parameters::AllMoodsets
        ? QStringLiteral("\nORDER BY moodset.favorite DESC, moodset.timestamp ASC;")
        : QStringLiteral("\nWHERE moodset.favorite = ? ORDER BY moodset.timestamp ASC;");
    return QStringLiteral("CREATE TEMPORARY TABLE %1 AS SELECT * FROM moodset").arg(table) + tail;
}

QString selectListing(const QString& table)
{
    return QStringLiteral(
               "SELECT file.id, directory.path || '/' || file.fileName AS filePath, file.mimeType, "
               "file.fileName, file.permissions, file.displayName, dorselid.dorselId, %1.favorite, "
               "%1.homeWallpaper, %1.applicationWallpaper, %1.highlightColor, "
               "%1.secondaryHighlightColor, %1.primaryColor, %1.secondaryColor, %1.ringerVolume, "
               "%1.enabledSounds, %1.partnerSpace, %1.version "
               "FROM %1 INNER JOIN file ON %1.fileId = file.id "
               "INNER JOIN directory on file.directoryId = directory.id "
               "LEFT OUTER JOIN dorselid ON %1.fileId = dorselid.fileId ORDER BY %1.rowid;")
        .arg(table);
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
    int column = 0;
    const auto next = [&] { return query.value(column++); };
    const auto nextColor = [&] { return colorFromString(next().toString()); };

    const qint64 id = next().toLongLong();
    auto* const moodset = new MoodsetData(id, QUrl::fromLocalFile(next().toString()));
    moodset->mimeType = next().toString();
    moodset->fileName = next().toString();
    moodset->permissions = next().toInt();
    moodset->displayName = next().toString();
    moodset->dorselId = next().toString();
    moodset->favorite = next().toBool();
    moodset->homeWallpaper = next().toString();
    moodset->applicationWallpaper = next().toString();
    moodset->highlightColor = nextColor();
    moodset->secondaryHighlightColor = nextColor();
    moodset->primaryColor = nextColor();
    moodset->secondaryColor = nextColor();
    moodset->ringerVolume = next().toInt();
    moodset->enabledSounds = next().toInt();
    moodset->partnerSpace = next().toString();
    moodset->version = next().toInt();
    return Content(moodset);
}

} // namespace

/// The resources of moodsets, in the order of the moodsets they belong to.
struct MoodsetQueryAgent::ResourceCursor
{
    QSqlQuery query;
    /// The moodset of the row that the query stands on; 0 when there is none.
    qint64 fileId = 0;

    void next() { fileId = query.next() ? query.value(0).toLongLong() : 0; }
};

MoodsetQueryAgent::MoodsetQueryAgent(QueryAgentDatabase& database)
    : QueryAgentSpecialization<MoodsetData>(database)
{
}

Content MoodsetQueryAgent::queryById(qint64 id)
{
    QSqlQuery query = prepareQuery(select(QStringLiteral("WHERE file.id = ?;")));
    query.bindValue(0, id);
    return querySingleMoodset(query);
}

Content MoodsetQueryAgent::queryByUrl(const QUrl& url)
{
    QSqlQuery query = prepareQueryByUrl(
        url, select(QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;")),
        select(QStringLiteral("WHERE file.id IN (SELECT fileId FROM download WHERE source = ?);")));
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
        // The moodset's query is reported, not the resources'.
        warn(query, SingleFunction, "Failed to execute resource query");
        return moodset;
    }
    cursor.next();
    readResources(&cursor, &moodset, 1);
    cursor.query.finish();
    return moodset;
}

/// Gives each moodset the resources that the cursor comes to. A resource of a moodset that is not
/// among `contents` stops the cursor for good.
void MoodsetQueryAgent::readResources(ResourceCursor* cursor, Content* contents, int count)
{
    for (int i = 0; i < count && cursor->fileId != 0; ++i) {
        if (cursor->fileId != contents[i].data()->id) {
            continue;
        }
        Moodset moodset(contents[i]);
        // Now the only handle, so that writing through it copies nothing.
        contents[i] = Content();
        while (cursor->fileId == moodset.constData()->id) {
            const QString type = cursor->query.value(1).toString();
            moodset->resources.insert(
                type,
                QVariantMap{
                    {QStringLiteral("url"), QUrl::fromLocalFile(cursor->query.value(2).toString())},
                    {QStringLiteral("fileName"), cursor->query.value(3)},
                    {QStringLiteral("displayName"), cursor->query.value(4)}});
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
    list(recipient, table);
    QSqlQuery drop = prepareQuery(QStringLiteral("DROP TABLE %1").arg(table));
    if (!drop.exec()) {
        warn(drop, ListFunction, "Failed to drop temporary moodset table");
    }
    return true;
}

/// Delivers the moodsets of the temporary table. A failure is reported, and ends the listing.
void MoodsetQueryAgent::list(Recipient* recipient, const QString& table)
{
    QSqlQuery listing = prepareQuery(selectListing(table));
    ResourceCursor cursor{prepareQuery(selectListingResources(table))};
    if (!listing.exec()) {
        warn(listing, ListFunction, "Failed to execute moodset query");
        return;
    }
    if (cursor.query.exec()) {
        cursor.next();
        deliver(listing, recipient, moodsetFromRow, [&cursor](QVector<Content>* batch) {
            readResources(&cursor, batch->data(), batch->size());
        });
    } else {
        // The listing's query is reported, not the resources'.
        warn(listing, ListFunction, "Failed to execute resource query");
    }
    // Either may stand on a row still, and the table cannot be dropped under it.
    listing.finish();
    cursor.query.finish();
}
