// SPDX-License-Identifier: BSD-3-Clause
#include "indexmanager.h"

#include "content/barename.h"
#include "content/displaynamecatalog.h"
#include "content/moodsetcontent.h"
#include "content/packagedfile.h"
#include "content/sqlbatch.h"
#include "content/storablename.h"
#include "filemanager.h"
#include "indexinglog.h"
#include "sortedmerge.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

#include <utility>

namespace {

const char* const IndexUpdateFunction = "virtual bool IndexManager::updateMetaData()";

const QLatin1String IndexSuffix(".index");

/// The columns of m_fileQuery.
enum IndexedColumn : int {
    IndexedId,
    IndexedFileName,
    IndexedDisplayName,
    IndexedModificationTime
};

QString pathIn(const QString& directory, const QString& fileName)
{
    return directory + QLatin1Char('/') + fileName;
}

} // namespace

/// A file that an index lists.
struct IndexManager::IndexEntry
{
    /// The file name in UTF-8. Entries are sorted by it.
    QByteArray name;
    QString fileName;
    QString displayName;
    QDateTime modified;
};

struct IndexManager::IndexChanges
{
    SqlBatch deletes;
    SqlBatch updates;
    SqlBatch inserts;

    bool isEmpty() const { return deletes.isEmpty() && updates.isEmpty() && inserts.isEmpty(); }
};

IndexManager::IndexManager(QueryAgentDatabase& database)
    : ContentManager(database)
{
    const char* const function = "IndexManager::IndexManager(QueryAgentDatabase&)";
    const char* const modifiedQueryFailed = "Failed to prepare m_modifiedQuery.";
    const bool isPrepared = prepare(
        {{m_fileQuery,
          QStringLiteral("SELECT id, fileName, displayName, modificationTime FROM file "
                         "WHERE directoryId = ? ORDER BY fileName ASC;"),
          "Failed to prepare m_fileQuery."},
         {m_fileInsert,
          QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                         "displayName, modificationTime, permissions, metadataCurrent) "
                         "VALUES(?, ?, ?, ?, ?, 1, 0)"),
          "Failed to prepare m_fileInsert."},
         {m_fileUpdate,
          QStringLiteral("UPDATE file SET displayName = ?, modificationTime = ?, "
                         "metadataCurrent = 0 WHERE id = ?;"),
          "Failed to prepare m_fileUpdate."},
         {m_fileDelete, QStringLiteral("DELETE FROM file WHERE id = ?;"),
          "Failed to prepare m_fileDelete."},
         {m_modifiedQuery,
          QStringLiteral("SELECT file.id, directory.path, file.fileName FROM file "
                         "LEFT JOIN directory ON file.directoryId = directory.id "
                         "WHERE file.metadataCurrent = 0 "
                         "AND file.mimeType = 'application/x-zavro-index' LIMIT 1;"),
          modifiedQueryFailed}},
        function);
    if (isPrepared
        && !m_modifiedReset.prepare(
            QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"))) {
        // The warning is the same as for the statement before.
        rollback(m_modifiedQuery, function, modifiedQueryFailed);
    }
}

bool IndexManager::updateMetaData()
{
    const std::optional<QString> path = takeIndexFile();
    if (!path) {
        return false;
    }
    const QJsonDocument document = PackagedFile::read(*path).json();
    if (!document.isObject()) {
        return true;
    }
    const QString directory = path->chopped(IndexSuffix.size());
    const qint64 directoryId =
        FileManager::fromRegistry()->appendDirectory(directory, FileManager::KnownEntries, false);
    if (directoryId == 0) {
        return true;
    }
    return updateDirectory(directory, directoryId, document.object());
}

/// The path of an index file that is not up to date. It is marked as up to date before it is read.
/// Nothing if there is none, or after a failure.
std::optional<QString> IndexManager::takeIndexFile()
{
    if (!m_modifiedQuery.exec()) {
        warn(m_modifiedQuery, IndexUpdateFunction, "Failed to execute m_modifiedQuery.");
        return std::nullopt;
    }
    if (!m_modifiedQuery.next()) {
        m_modifiedQuery.finish();
        return std::nullopt;
    }
    m_indexFileId = m_modifiedQuery.value(ModifiedId).toLongLong();
    bind(m_modifiedReset, {m_indexFileId});
    QString path = m_modifiedQuery.value(ModifiedDirectory).toString() + QLatin1Char('/')
        + m_modifiedQuery.value(ModifiedName).toString();
    m_modifiedQuery.finish();
    const bool isMarked =
        run(m_modifiedReset, IndexUpdateFunction, "Failed to execute m_modifiedReset.");
    return isMarked ? std::make_optional(std::move(path)) : std::nullopt;
}

/// Marks the index file as not up to date again, because its names could not be stored.
void IndexManager::returnIndexFile()
{
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = ?;"));
    bind(query, {m_indexFileId});
    run(query, IndexUpdateFunction, "Failed to mark the index file.");
}

bool IndexManager::updateDirectory(
    const QString& path, qint64 directoryId, const QJsonObject& index)
{
    const QVector<IndexEntry> entries = readEntries(path, index);
    bind(m_fileQuery, {directoryId});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, IndexUpdateFunction, "Failed to execute m_fileQuery");
        return false;
    }
    IndexChanges changes;
    merge(entries, path, directoryId, &changes);
    if (!apply(changes)) {
        return false;
    }
    if (!changes.isEmpty()) {
        notifyContentChanged(MoodsetContent::File);
    }
    FileManager::fromRegistry()->scheduleUpdate();
    return true;
}

/// The valid entries of an index, sorted by name.
QVector<IndexManager::IndexEntry> IndexManager::readEntries(
    const QString& directory, const QJsonObject& index)
{
    DisplayNameCatalog catalog;
    catalog.load(index.value(QLatin1String("translationCatalog")).toString());
    QVector<IndexEntry> entries;
    const QJsonArray files = index.value(QLatin1String("files")).toArray();
    for (const QJsonValue& value : files) {
        const QJsonObject object = value.toObject();
        const QString fileName = object.value(QLatin1String("fileName")).toString();
        const QFileInfo file(pathIn(directory, fileName));
        if (!isBareName(fileName) || !file.exists()) {
            continue;
        }
        if (!isStorableName(fileName)) {
            qCWarning(indexingLog) << IndexUpdateFunction << "Name cannot be stored" << fileName;
            continue;
        }
        entries.append(
            {fileName.toUtf8(), fileName,
             catalog.translated(object.value(QLatin1String("displayName")).toString()),
             file.lastModified()});
    }
    sortByName(&entries);
    return entries;
}

/// If the merge sees an entry again after it has deleted a row, the entry counts as a duplicate of
/// itself and is left out.
void IndexManager::merge(
    const QVector<IndexEntry>& entries, const QString& directory, qint64 directoryId,
    IndexChanges* changes)
{
    QString previous;
    const auto accept = [&](const IndexEntry& entry) {
        if (entry.fileName == previous) {
            qCWarning(indexingLog) << IndexUpdateFunction;
            qCWarning(indexingLog) << "Duplicate fileName in .index file" << entry.fileName;
            return false;
        }
        previous = entry.fileName;
        return true;
    };
    const auto added = [&](const IndexEntry& entry) {
        const QFileInfo file(pathIn(directory, entry.fileName));
        changes->inserts.append(
            {directoryId, m_mimeTypes.typeName(file), entry.fileName, entry.displayName,
             entry.modified});
    };
    const auto matched = [&](const IndexEntry& entry) {
        if (entry.modified != m_fileQuery.value(IndexedModificationTime).toDateTime()
            || entry.displayName != m_fileQuery.value(IndexedDisplayName).toString()) {
            changes->updates.append(
                {entry.displayName, entry.modified, m_fileQuery.value(IndexedId)});
        }
    };
    const auto removed = [&] { changes->deletes.append({m_fileQuery.value(IndexedId)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(IndexedFileName).toString().toUtf8(); }, added, matched,
        removed, accept);
    m_fileQuery.finish();
}

bool IndexManager::apply(const IndexChanges& changes)
{
    beginTransaction();
    if (!runBatch(
            changes.deletes, m_fileDelete, IndexUpdateFunction, "Failed to execute m_fileDelete.")
        || !runBatch(
            changes.updates, m_fileUpdate, IndexUpdateFunction, "Failed to execute m_fileUpdate.")
        || !runBatch(
            changes.inserts, m_fileInsert, IndexUpdateFunction,
            "Failed to execute m_fileInsert.")) {
        return false;
    }
    if (commit(IndexUpdateFunction)) {
        return true;
    }
    returnIndexFile();
    return false;
}
