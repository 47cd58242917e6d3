// SPDX-License-Identifier: BSD-3-Clause
// The part of MoodsetManager that reads changed moodset files, keeps the edits of users, and writes
// the rows.
#include "moodsetmanager.h"

#include "content/barename.h"
#include "content/displaynamecatalog.h"
#include "content/moodsetcontent.h"
#include "content/packagedfile.h"
#include "content/sqlbatch.h"
#include "content/storablename.h"
#include "indexing/filemanager.h"
#include "moodsetdocument.h"
#include "moodsetlog.h"
#include "tones.h"

#include <QDateTime>
#include <QFile>
#include <QSet>

#include <vector>

namespace {

const char* const Constructor = "MoodsetManager::MoodsetManager(QueryAgentDatabase&, QObject*)";
const char* const UpdateFunction = "virtual bool MoodsetManager::updateMetaData()";

/// The database view gives at most this many files.
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

/// The content of a moodset file, as values of columns.
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

/// The root of a moodset file. Empty, with a warning, if there is none.
QJsonObject parseObject(const PackagedFile& file)
{
    QJsonParseError error;
    const QJsonDocument document = file.json(&error);
    // A file that is too large has caused a warning already.
    if (!document.isObject() && file.state == PackagedFile::Read) {
        qCWarning(moodsetLog) << "Failed to parse moodset" << int(error.error) << error.offset;
    }
    return document.object();
}

/// The path of the wallpaper that a moodset file names, or a null text if it is unusable.
QString wallpaperPath(const QString& directory, const MoodsetDocument& moodset)
{
    const QString name = moodset.wallpaper();
    QString path = directory + QStringLiteral("/images/") + name;
    if (name.isEmpty() || !QFile::exists(path)) {
        return QString();
    }
    if (!isStorableName(path)) {
        qCWarning(moodsetLog) << UpdateFunction << "Name cannot be stored" << name;
        return QString();
    }
    return path;
}

/// A colour as the column stores it, which is the text in the file. An array or an object becomes
/// an empty text, without a conversion that could take hundreds of MiB.
QVariant colorColumn(const QJsonValue& color)
{
    const bool hasParts = color.isArray() || color.isObject();
    return hasParts ? QVariant(QStringLiteral("")) : color.toVariant();
}

/// The time that a moodset file gives, in the form of the database. If it gives none, this is
/// `now`.
QString timestamp(const MoodsetDocument& moodset, const QString& now)
{
    const QDateTime time = QDateTime::fromString(moodset.timestamp(), Qt::ISODate);
    return time.isValid() ? time.toString(Qt::ISODate) : now;
}

/// The id of a tone's file. A file without a row gets one. 0 if the tone has no file.
qint64 toneFileId(
    const MoodsetDocument::Tone& tone, const QString& directory, const QString& fallback)
{
    FileManager* const files = FileManager::fromRegistry();
    if (tone.fileName.isEmpty()) {
        return tone.isEnabled ? files->insertFile(fallback) : 0;
    }
    return isBareName(tone.fileName)
        ? files->insertFile(directory + QStringLiteral("/sounds/") + tone.fileName)
        : 0;
}

/// Replaces the values that the file gives only for new rows by the values that the row has.
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
    /// All files, including those that could not be opened.
    SqlBatch processed;
    QSet<qint64> deleted;
    std::vector<ParsedMoodset> parsed;
    /// The ids in `parsed`.
    QSet<qint64> parsedIds;
    /// Indexes in `parsed` of the moodsets that have no row yet.
    std::vector<size_t> inserted;
    SqlBatch resources;
    DisplayNameCatalog catalog;
    /// The time of this turn, for files that give none.
    QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    /// The sum of the file sizes so far. The texts of the files stay in memory until they are
    /// written.
    qint64 size = 0;

    /// Whether the remaining files have to wait for the next turn.
    bool isFull() const
    {
        return processed.rowCount() == BatchSize || size >= PackagedFile::MaximumSize;
    }
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
    while (!batch.isFull() && m_modifiedQuery.next()) {
        readFile(
            m_modifiedQuery.value(ModifiedId).toLongLong(),
            m_modifiedQuery.value(ModifiedDirectory).toString(),
            m_modifiedQuery.value(ModifiedName).toString(), &batch);
    }
    m_modifiedQuery.finish();
    if (!mergeStored(&batch) || batch.processed.isEmpty() || !applyMetadata(batch)) {
        return false;
    }
    notifyContentChanged(MoodsetContent::Moodset);
    announceActiveMoodset(batch.parsedIds);
    return batch.isFull();
}

/// Reads one file into the batch. A file that cannot be opened becomes up to date and changes
/// nothing.
void MoodsetManager::readFile(
    qint64 id, const QString& directory, const QString& fileName, MetadataBatch* batch)
{
    batch->processed.append({id});
    const PackagedFile file = PackagedFile::read(directory + QLatin1Char('/') + fileName);
    if (file.state == PackagedFile::NotReadable) {
        return;
    }
    batch->size += file.content.size();
    const MoodsetDocument document(parseObject(file), MoodsetDocument::ForRow);
    const QString wallpaper = wallpaperPath(directory, document);
    if (wallpaper.isNull()) {
        batch->deleted.insert(id);
        return;
    }
    batch->catalog.load(document.translationCatalog());

    ParsedMoodset moodset;
    moodset.id = id;
    moodset.homeWallpaper = wallpaper;
    moodset.favorite = int(document.isFavorite());
    moodset.displayName = batch->catalog.translated(document.displayName());
    moodset.highlightColor = colorColumn(document.highlightColor());
    moodset.secondaryHighlightColor = colorColumn(document.secondaryHighlightColor());
    moodset.primaryColor = colorColumn(document.primaryColor());
    moodset.secondaryColor = colorColumn(document.secondaryColor());
    moodset.ringerVolume = document.ringerVolume();
    moodset.partnerSpace = document.partnerSpace();
    moodset.timestamp = timestamp(document, batch->now);
    moodset.version = document.version();
    moodset.enabledSounds = readTones(id, directory, document, &batch->resources);
    batch->parsed.push_back(moodset);
    batch->parsedIds.insert(id);
}

/// Adds the files of a moodset's tones to `resources`, and returns the mask of the enabled tones. A
/// tone without an object is enabled and has no file.
int MoodsetManager::readTones(
    qint64 id, const QString& directory, const MoodsetDocument& moodset, SqlBatch* resources) const
{
    int mask = -1;
    for (int i = 0; i < m_toneNames.size(); ++i) {
        const MoodsetDocument::Tone tone = moodset.tone(i);
        if (!tone.isGiven) {
            continue;
        }
        if (!tone.isEnabled) {
            mask = Tones::withTone(mask, i, false);
        }
        const qint64 fileId = toneFileId(tone, directory, m_fallbackTones.at(i));
        if (fileId != 0) {
            resources->append({id, Tones::fileKey(m_toneNames.at(i)), fileId});
        }
    }
    return mask;
}

/// Looks for the row of each parsed moodset. A moodset with a row keeps what users have edited, and
/// a moodset without one is noted in `inserted`. False if the rows cannot be read.
///
/// The rows have the same order as the parsed moodsets. A row whose file could not be opened ends
/// the search, and all remaining moodsets count as new. If one of them has a row, its insertion
/// fails, and with it the whole batch.
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
    // The id of the next row, or 0 after the last one.
    const auto nextRow = [&rows] { return rows.next() ? rows.value(Id).toLongLong() : 0; };
    qint64 row = nextRow();
    for (size_t i = 0; i < batch->parsed.size();) {
        if (row == batch->parsed[i].id) {
            keepEdits(rows, &batch->parsed[i++]);
            row = nextRow();
        } else if (batch->deleted.contains(row)) {
            row = nextRow();
        } else {
            batch->inserted.push_back(i++);
        }
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
    beginTransaction();
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
    return commit(UpdateFunction);
}
