// SPDX-License-Identifier: BSD-3-Clause
// The scan of one directory, which brings FileManager's rows in line with the directory's entries.
#include "directorylisting.h"
#include "filemanager.h"
#include "sortedmerge.h"

#include <QFileInfo>
#include <QVariant>

namespace {

const char* const Function = "bool FileManager::scanDirectory()";

} // namespace

struct FileManager::ScanChanges
{
    SqlBatch fileInserts;
    SqlBatch fileUpdates;
    SqlBatch fileDeletes;
    /// The paths of sub-directories to insert.
    QStringList newDirectories;
    SqlBatch directoryDeletes;
};

/// Handles the first directory of the queue; true if more work is to come at once.
bool FileManager::scanDirectory()
{
    if (m_pendingDirectories.isEmpty()) {
        return false;
    }
    const QString path = m_pendingDirectories.takeFirst();
    qint64 id = 0;
    DirectoryScope scope = AllEntries;
    // Watched before it is listed, so that no change during the scan is lost.
    if (!watchDirectory(path, &id, &scope)) {
        return !m_pendingDirectories.isEmpty();
    }
    const DirectoryListing listing = listDirectory(path);
    ScanChanges changes;
    bind(m_fileQuery, {id});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, Function, "Failed to execute m_fileQuery");
        return false;
    }
    mergeFiles(listing.files, id, scope, &changes);
    bind(m_directoryQuery, {id});
    if (!m_directoryQuery.exec()) {
        warn(m_directoryQuery, Function, "Failed to execute m_directoryQuery");
        return false;
    }
    mergeDirectories(listing.directories, path, scope, &changes);
    if (!applyScan(id, changes)) {
        return false;
    }
    announceFileChanges();
    return true;
}

void FileManager::mergeFiles(
    const QVector<FileEntry>& entries, qint64 directoryId, DirectoryScope scope,
    ScanChanges* changes)
{
    const auto added = [&](const FileEntry& entry) {
        if (scope == AllEntries) {
            changes->fileInserts.append(
                {directoryId, m_mimeTypes.typeName(QFileInfo(entry.path), entry.isRegular),
                 entry.fileName, entry.modified});
        }
    };
    const auto matched = [&](const FileEntry& entry) {
        if (scope < RemovalsOnly && !(entry.modified == m_fileQuery.value(2).toDateTime())) {
            changes->fileUpdates.append({entry.modified, m_fileQuery.value(0)});
        }
    };
    const auto removed = [&] { changes->fileDeletes.append({m_fileQuery.value(0)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(1).toString().toUtf8(); }, added, matched, removed);
    m_fileQuery.finish();
}

void FileManager::mergeDirectories(
    const QVector<DirectoryEntry>& entries, const QString& path, DirectoryScope scope,
    ScanChanges* changes)
{
    const auto rowPath = [&] { return m_directoryQuery.value(1).toString(); };
    const auto added = [&](const DirectoryEntry& entry) {
        if (scope == AllEntries) {
            changes->newDirectories.append(entry.path);
            m_pendingDirectories.append(entry.path);
        }
    };
    const auto matched = [&](const DirectoryEntry&) { m_pendingDirectories.append(rowPath()); };
    const auto removed = [&] { changes->directoryDeletes.append({m_directoryQuery.value(0)}); };
    mergeSorted(
        entries, [&] { return m_directoryQuery.next(); },
        [&] { return rowPath().mid(path.size() + 1).toUtf8(); }, added, matched, removed);
    m_directoryQuery.finish();
}

/// Writes what a scan has found, in one transaction.
bool FileManager::applyScan(qint64 directoryId, const ScanChanges& changes)
{
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    if (!runBatch(
            changes.directoryDeletes, m_directoryDelete, Function,
            "Failed to execute m_directoryDelete.")) {
        return false;
    }
    SqlBatch inserts;
    SqlBatch relinks;
    if (!separateKnownDirectories(directoryId, changes.newDirectories, &inserts, &relinks)) {
        return false;
    }
    if (!runBatch(inserts, m_directoryInsert, Function, "Failed to execute m_directoryInsert.")
        || !runBatch(
            relinks, m_directoryParentUpdate, Function,
            "Failed to execute m_directoryParentUpdate.")
        || !runBatch(
            changes.fileDeletes, m_fileSyncDelete, Function, "Failed to execute m_fileSyncDelete.")
        || !runBatch(
            changes.fileUpdates, m_fileSyncUpdate, Function, "Failed to execute m_fileSyncUpdate.")
        || !runBatch(
            changes.fileInserts, m_fileInsert, Function, "Failed to execute m_fileInsert.")) {
        return false;
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}

/// Tells the new sub-directories that get a row from those that have one under another parent.
///
/// The lookup is finished before it is stepped, so no row ever comes back and all paths go to the
/// inserts: one that is registered already fails there, with the whole scan of its parent.
bool FileManager::separateKnownDirectories(
    qint64 parentId, const QStringList& paths, SqlBatch* inserts, SqlBatch* relinks)
{
    for (const QString& path : paths) {
        bind(m_directoryIdQuery, {path});
        if (!m_directoryIdQuery.exec()) {
            rollback(m_directoryIdQuery, Function, "Failed to execute m_directoryIdQuery.");
            return false;
        }
        m_directoryIdQuery.finish();
        if (m_directoryIdQuery.next()) {
            relinks->append({parentId, m_directoryIdQuery.value(0)});
            m_directoryIdQuery.finish();
        } else {
            inserts->append({parentId, path});
        }
    }
    return true;
}
