// SPDX-License-Identifier: BSD-3-Clause
// What MoodsetManager does with moodset files that have changed: parses them, lays what users have
// edited over it, and writes the rows.
#include "moodsetmanager.h"

#include "content/displaynamecatalog.h"
#include "content/moodsetcontent.h"
#include "content/sqlbatch.h"
#include "indexing/filemanager.h"
#include "tones.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <vector>

namespace {

const char* const Constructor = "MoodsetManager::MoodsetManager(QueryAgentDatabase&, QObject*)";
const char* const UpdateFunction = "virtual bool MoodsetManager::updateMetaData()";

/// As many files as the view gives at most.
constexpr int BatchSize = 100;

/// The columns of m_modifiedMoodsetQuery that are read.
enum StoredColumn : int {
    Id,
    DisplayName,
    Favorite,
    Timestamp,
    RingerVolume,
    EnabledSounds,
    PartnerSpace,
    HighlightColor,
    SecondaryHighlightColor,
    PrimaryColor,
    SecondaryColor
};

/// What a moodset file says, as values of columns.
struct ParsedMoodset
{
    qint64 id = 0;
    QVariant homeWallpaper;
    QVariant favorite;
    QVariant displayName;
    QVariant highlightColor;
    QVariant secondaryHighlightColor;
    QVariant primaryColor;
    QVariant secondaryColor;
    QVariant ringerVolume;
    QVariant partnerSpace;
    QVariant timestamp;
    QVariant version;
    QVariant enabledSounds;
};

QString text(const QJsonObject& object, const char* key)
{
    return object.value(QLatin1String(key)).toString();
}

/// The document of a moodset file, or an empty object with a warning.
QJsonObject parseObject(const QByteArray& content)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    if (!document.isObject()) {
        qWarning() << "Failed to parse moodset" << static_cast<int>(error.error) << error.offset;
    }
    return document.object();
}

/// The path of the wallpaper that a moodset file names, or a null text if it is of no use.
QString wallpaperPath(const QString& directory, const QJsonObject& moodset)
{
    const QString name = text(moodset, "wallpaper");
    const QString path = directory + QStringLiteral("/images/") + name;
    const bool isUsable =
        !name.isEmpty() && !name.contains(QLatin1Char('/')) && QFile::exists(path);
    return isUsable ? path : QString();
}

/// The time that a moodset file gives, in the form of the database, or `now`.
QString timestamp(const QJsonObject& moodset, const QString& now)
{
    const QDateTime time = QDateTime::fromString(text(moodset, "timestamp"), Qt::ISODate);
    return time.isValid() ? time.toString(Qt::ISODate) : now;
}

int version(const QJsonObject& moodset)
{
    const QLatin1String key("version");
    return moodset.contains(key) ? moodset.value(key).toInt(0) : 1;
}

/// Whether a tone sounds: only the number 0 says that it does not.
bool isToneEnabled(const QJsonObject& tone)
{
    return tone.value(QLatin1String("enabled")).toInt(1) != 0;
}

/// The id of a tone's file, which gets a row if it has none; 0 if there is none to be had.
qint64 toneFileId(const QJsonObject& tone, const QString& directory, const QString& fallback)
{
    const QString name = text(tone, "file");
    if (name.contains(QLatin1Char('/')) || (name.isEmpty() && !isToneEnabled(tone))) {
        return 0;
    }
    return FileManager::fromRegistry()->insertFile(
        name.isEmpty() ? fallback : directory + QStringLiteral("/sounds/") + name);
}

/// Puts what a row holds in the place of what only counts when the row is made.
void keepEdits(const QSqlQuery& row, ParsedMoodset* moodset)
{
    if (moodset->displayName.toString().isEmpty()) {
        moodset->displayName = row.value(DisplayName);
    }
    moodset->favorite = row.value(Favorite);
    moodset->timestamp = row.value(Timestamp);
    moodset->ringerVolume = row.value(RingerVolume);
    moodset->enabledSounds = row.value(EnabledSounds);
    moodset->partnerSpace = row.value(PartnerSpace);
    moodset->highlightColor = row.value(HighlightColor);
    moodset->secondaryHighlightColor = row.value(SecondaryHighlightColor);
    moodset->primaryColor = row.value(PrimaryColor);
    moodset->secondaryColor = row.value(SecondaryColor);
}

} // namespace

/// The files of one turn.
struct MoodsetManager::MetadataBatch
{
    /// All files, also those that could not be opened.
    SqlBatch processed;
    QSet<qint64> deleted;
    std::vector<ParsedMoodset> parsed;
    /// The ids in `parsed`.
    QSet<qint64> parsedIds;
    /// Indexes into `parsed` of moodsets that have no row yet.
    std::vector<size_t> inserted;
    SqlBatch resources;
    DisplayNameCatalog catalog;
    /// The time of this turn, for files that give none.
    QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
};

bool MoodsetManager::prepareMetadataStatements()
{
    QSqlQuery view(m_database);
    if (!view.exec(QStringLiteral(
            "CREATE TEMPORARY VIEW modified_moodset AS SELECT file.id AS id, "
            "directory.path AS path, file.fileName AS fileName, file.displayName as displayName "
            "FROM file LEFT JOIN directory ON file.directoryId = directory.id "
            "WHERE file.metadataCurrent = 0 "
            "AND file.mimeType = 'application/x-zavro-moodset'ORDER BY file.directoryId "
            "LIMIT 100;"))) {
        rollback(view, Constructor, "Failed to execute query.");
        return false;
    }
    return prepare(
        {{m_modifiedQuery, QStringLiteral("SELECT id, path, fileName FROM modified_moodset;"),
          "Failed to prepare m_modifiedQuery."},
         {m_modifiedMoodsetQuery,
          QStringLiteral(
              "SELECT modified_moodset.id, modified_moodset.displayName, moodset.favorite, "
              "moodset.timestamp, moodset.ringerVolume, moodset.enabledSounds, "
              "moodset.partnerSpace, moodset.highlightColor, "
              "moodset.secondaryhighlightColor, moodset.primaryColor, "
              "moodset.secondaryColor, moodset.version "
              "FROM modified_moodset INNER JOIN moodset "
              "ON modified_moodset.id = moodset.fileId;"),
          "Failed to prepare m_modifiedMoodsetQuery."},
         {m_modifiedResourceQuery,
          QStringLiteral("SELECT resource.fileId, resource.resourceId, resource.resourceType "
                         "FROM modified_moodset INNER JOIN resource "
                         "ON modified_moodset.id = resource.fileId;"),
          "Failed to prepare m_modifiedResourceQuery."},
         {m_modifiedReset, QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"),
          "Failed to prepare m_modifiedReset."}},
        Constructor);
}

bool MoodsetManager::updateMetaData()
{
    if (!m_modifiedQuery.exec()) {
        warn(m_modifiedQuery, UpdateFunction, "Failed to execute m_modifiedQuery");
        return false;
    }
    MetadataBatch batch;
    while (m_modifiedQuery.next()) {
        readFile(
            m_modifiedQuery.value(0).toLongLong(), m_modifiedQuery.value(1).toString(),
            m_modifiedQuery.value(2).toString(), &batch);
    }
    m_modifiedQuery.finish();
    if (!mergeStored(&batch) || batch.processed.isEmpty() || !applyMetadata(batch)) {
        return false;
    }
    notifyContentChanged(MoodsetContent::Moodset);
    if (m_activeMoodset && batch.parsedIds.contains(m_activeMoodset.constData()->id)) {
        announceActiveMoodset();
    }
    return batch.processed.rowCount() == BatchSize;
}

/// Reads one file into the batch. One that cannot be opened counts as done and changes nothing.
void MoodsetManager::readFile(
    qint64 id, const QString& directory, const QString& fileName, MetadataBatch* batch)
{
    batch->processed.append({id});
    QFile file(directory + QLatin1Char('/') + fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    const QJsonObject object = parseObject(file.readAll());
    const QString wallpaper = wallpaperPath(directory, object);
    if (wallpaper.isNull()) {
        batch->deleted.insert(id);
        return;
    }
    batch->catalog.load(text(object, "translationCatalog"));

    const auto color = [&](const char* key) {
        return object.value(QLatin1String(key)).toVariant();
    };
    ParsedMoodset moodset;
    moodset.id = id;
    moodset.homeWallpaper = wallpaper;
    moodset.favorite = static_cast<int>(object.value(QLatin1String("favorite")).toBool(true));
    moodset.displayName = batch->catalog.translated(text(object, "displayName"));
    moodset.highlightColor = color("highlightColor");
    moodset.secondaryHighlightColor = color("secondaryHighlightColor");
    moodset.primaryColor = color("primaryColor");
    // The plural, unlike in the record that is read straight from a file.
    moodset.secondaryColor = color("secondaryColors");
    moodset.ringerVolume = object.value(QLatin1String("ringerVolume")).toInt(80);
    moodset.partnerSpace = text(object, "partnerSpace");
    moodset.timestamp = timestamp(object, batch->now);
    moodset.version = version(object);
    moodset.enabledSounds = readTones(id, directory, object, &batch->resources);
    batch->parsed.push_back(moodset);
    batch->parsedIds.insert(id);
}

/// Adds the files of a moodset's tones to `resources`, and gives the mask of the enabled ones. A
/// tone without an object is enabled and has no file.
int MoodsetManager::readTones(
    qint64 id, const QString& directory, const QJsonObject& moodset, SqlBatch* resources) const
{
    int mask = -1;
    for (int i = 0; i < m_toneNames.size(); ++i) {
        const QString key = Tones::fileKey(m_toneNames.at(i));
        const QJsonObject tone = moodset.value(key).toObject();
        if (tone.isEmpty()) {
            continue;
        }
        if (!isToneEnabled(tone)) {
            mask = Tones::withTone(mask, i, false);
        }
        const qint64 fileId = toneFileId(tone, directory, m_fallbackTones.at(i));
        if (fileId != 0) {
            resources->append({id, key, fileId});
        }
    }
    return mask;
}

/// Walks the parsed moodsets and the stored rows in step, lays what users have edited over the
/// first, and tells those that have no row. False if the rows cannot be read.
///
/// A row whose file could not be opened stops the walk: all that are left count as new, and if one
/// of them is not, the whole batch fails later.
bool MoodsetManager::mergeStored(MetadataBatch* batch)
{
    if (batch->parsed.empty()) {
        return true;
    }
    QSqlQuery& rows = m_modifiedMoodsetQuery;
    if (!rows.exec()) {
        warn(rows, UpdateFunction, "Failed to execute m_modifiedMoodsetQuery");
        return false;
    }
    size_t i = 0;
    bool hasRow = rows.next();
    while (hasRow && i < batch->parsed.size()) {
        const qint64 rowId = rows.value(Id).toLongLong();
        if (rowId == batch->parsed.at(i).id) {
            keepEdits(rows, &batch->parsed[i++]);
            hasRow = rows.next();
        } else if (batch->deleted.contains(rowId)) {
            hasRow = rows.next();
        } else {
            do {
                batch->inserted.push_back(i++);
            } while (i < batch->parsed.size() && batch->parsed.at(i).id != rowId);
        }
    }
    while (i < batch->parsed.size()) {
        batch->inserted.push_back(i++);
    }
    rows.finish();
    return true;
}

/// Writes a batch in one transaction.
bool MoodsetManager::applyMetadata(const MetadataBatch& batch)
{
    SqlBatch deletes;
    for (const qint64 id : batch.deleted) {
        deletes.append({id});
    }
    SqlBatch inserts;
    for (const size_t i : batch.inserted) {
        const ParsedMoodset& moodset = batch.parsed.at(i);
        inserts.append(
            {moodset.id, moodset.homeWallpaper, QVariant(), moodset.highlightColor,
             moodset.secondaryHighlightColor, moodset.primaryColor, moodset.secondaryColor,
             moodset.ringerVolume, moodset.enabledSounds, moodset.favorite, moodset.partnerSpace,
             moodset.version});
    }
    SqlBatch names;
    SqlBatch updates;
    SqlBatch clears;
    for (const ParsedMoodset& moodset : batch.parsed) {
        names.append({moodset.displayName, moodset.id});
        // Also for new rows, which get their time stamp here.
        updates.append(
            {moodset.favorite, moodset.timestamp, moodset.homeWallpaper, QVariant(),
             moodset.highlightColor, moodset.secondaryHighlightColor, moodset.primaryColor,
             moodset.secondaryColor, moodset.ringerVolume, moodset.enabledSounds,
             moodset.partnerSpace, moodset.version, moodset.id});
        clears.append({moodset.id});
    }
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    const auto apply = [this](const SqlBatch& rows, QSqlQuery& query, const char* message) {
        return runBatch(rows, query, UpdateFunction, message);
    };
    if (!apply(batch.processed, m_modifiedReset, "Failed to execute m_modifiedReset.")
        || !apply(deletes, m_deleteMoodset, "Failed to execute m_deleteMoodset.")
        || !apply(inserts, m_insertMoodset, "Failed to execute m_insertMoodset.")
        || !apply(names, m_updateFile, "Failed to execute m_updateFile.")
        || !apply(updates, m_updateMoodset, "Failed to execute m_updateMoodset.")
        || !apply(clears, m_clearResources, "Failed to execute m_clearResources.")
        || !apply(batch.resources, m_insertResource, "Failed to execute m_insertResource.")) {
        return false;
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}
