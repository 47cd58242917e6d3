// SPDX-License-Identifier: BSD-3-Clause
#include "indexmanager.h"

#include "content/displaynamecatalog.h"
#include "content/moodsetcontent.h"
#include "content/sqlbatch.h"
#include "filemanager.h"
#include "sortedmerge.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

namespace {

const char* const UpdateFunction = "virtual bool IndexManager::updateMetaData()";

const QLatin1String IndexSuffix(".index");

/// The columns of m_fileQuery.
enum Column : int { Id, FileName, DisplayName, ModificationTime };

/// Whether a file can have that name. Half a surrogate pair gets lost on the way to the disk, where
/// the rest of the name can be that of another file.
bool isFileName(const QString& name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null)
        && QString::fromUtf8(name.toUtf8()) == name;
}

} // namespace

/// A file that an index lists.
struct IndexManager::IndexEntry
{
    /// The file name in UTF-8, by which entries are sorted.
    QByteArray name;
    QString path;
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
    , m_fileQuery(m_database)
    , m_fileInsert(m_database)
    , m_fileUpdate(m_database)
    , m_fileDelete(m_database)
    , m_modifiedQuery(m_database)
    , m_modifiedReset(m_database)
{
    const char* const modifiedQueryFailed = "Failed to prepare m_modifiedQuery.";
    prepare(
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
          modifiedQueryFailed},
         // Reported as the statement before it.
         {m_modifiedReset, QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"),
          modifiedQueryFailed, &m_modifiedQuery}},
        "IndexManager::IndexManager(QueryAgentDatabase&)");
}

bool IndexManager::updateMetaData()
{
    QString path;
    if (!takeIndexFile(&path)) {
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return true;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        return true;
    }
    const QString directory = path.chopped(IndexSuffix.size());
    const qint64 directoryId =
        FileManager::fromRegistry()->appendDirectory(directory, FileManager::KnownEntries, false);
    if (directoryId == 0) {
        return true;
    }
    return updateDirectory(directory, directoryId, document.object());
}

/// Finds an index file that is not up to date, and marks it as done whatever becomes of it; false
/// if there is none.
bool IndexManager::takeIndexFile(QString* path)
{
    if (!m_modifiedQuery.exec()) {
        warn(m_modifiedQuery, UpdateFunction, "Failed to execute m_modifiedQuery.");
        return false;
    }
    if (!m_modifiedQuery.next()) {
        m_modifiedQuery.finish();
        return false;
    }
    bind(m_modifiedReset, {m_modifiedQuery.value(0)});
    *path = m_modifiedQuery.value(1).toString() + QLatin1Char('/')
        + m_modifiedQuery.value(2).toString();
    m_modifiedQuery.finish();
    return run(m_modifiedReset, UpdateFunction, "Failed to execute m_modifiedReset.");
}

bool IndexManager::updateDirectory(
    const QString& path, qint64 directoryId, const QJsonObject& index)
{
    const QVector<IndexEntry> entries = readEntries(path, index);
    bind(m_fileQuery, {directoryId});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, UpdateFunction, "Failed to execute m_fileQuery");
        return false;
    }
    IndexChanges changes;
    merge(entries, directoryId, &changes);
    if (!apply(changes)) {
        return false;
    }
    if (!changes.isEmpty()) {
        notifyContentChanged(MoodsetContent::File);
    }
    FileManager::fromRegistry()->scheduleUpdate();
    return true;
}

/// The usable entries of an index, sorted by name.
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
        const QFileInfo file(directory + QLatin1Char('/') + fileName);
        if (!isFileName(fileName) || !file.exists()) {
            continue;
        }
        entries.append(
            {fileName.toUtf8(), file.filePath(), fileName,
             catalog.translated(object.value(QLatin1String("displayName")).toString()),
             file.lastModified()});
    }
    sortByName(&entries);
    return entries;
}

/// An entry that is met again after a row was deleted counts as a duplicate of itself, and is
/// dropped.
void IndexManager::merge(
    const QVector<IndexEntry>& entries, qint64 directoryId, IndexChanges* changes)
{
    QString previous;
    const auto accept = [&](const IndexEntry& entry) {
        if (entry.fileName == previous) {
            qWarning() << UpdateFunction;
            qWarning() << "Duplicate fileName in .index file" << entry.fileName;
            return false;
        }
        previous = entry.fileName;
        return true;
    };
    const auto added = [&](const IndexEntry& entry) {
        changes->inserts.append(
            {directoryId, m_mimeTypes.typeName(QFileInfo(entry.path)), entry.fileName,
             entry.displayName, entry.modified});
    };
    const auto matched = [&](const IndexEntry& entry) {
        if (entry.modified != m_fileQuery.value(ModificationTime).toDateTime()
            || entry.displayName != m_fileQuery.value(DisplayName).toString()) {
            changes->updates.append({entry.displayName, entry.modified, m_fileQuery.value(Id)});
        }
    };
    const auto removed = [&] { changes->deletes.append({m_fileQuery.value(Id)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(FileName).toString().toUtf8(); }, added, matched, removed,
        accept);
    m_fileQuery.finish();
}

bool IndexManager::apply(const IndexChanges& changes)
{
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    if (!runBatch(changes.deletes, m_fileDelete, UpdateFunction, "Failed to execute m_fileDelete.")
        || !runBatch(
            changes.updates, m_fileUpdate, UpdateFunction, "Failed to execute m_fileUpdate.")
        || !runBatch(
            changes.inserts, m_fileInsert, UpdateFunction, "Failed to execute m_fileInsert.")) {
        return false;
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}
