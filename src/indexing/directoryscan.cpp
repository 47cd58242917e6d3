// SPDX-License-Identifier: BSD-3-Clause
// The scan of one directory: FileManager compares the directory's entries with its rows.
#include "directorylisting.h"
#include "filemanager.h"
#include "filename.h"
#include "sortedmerge.h"

#include "content/storablename.h"

#include <QFileInfo>
#include <QVariant>

namespace {

const char* const ScanFunction = "bool FileManager::scanDirectory()";

/// The columns of m_fileQuery; all queries here begin with an id.
enum FileColumn : int { ScannedId, ScannedFileName, ScannedModificationTime };

/// The second column of m_directoryQuery.
constexpr int Path = 1;

void warnOfUndecodableEntries(const QString& path)
{
    for (const UndecodableEntry& entry : listUndecodable(path)) {
        if (entry.isFile || entry.isDirectory) {
            warnOfUndecodableName(ScanFunction, entry.path);
        }
    }
}

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

/// Handles the first directory of the queue. True if there is more work to do at once.
bool FileManager::scanDirectory()
{
    if (m_pendingDirectories.isEmpty()) {
        return false;
    }
    const QString path = m_pendingDirectories.takeFirst();
    qint64 id = 0;
    DirectoryScope scope = AllEntries;
    // The directory is watched before it is listed, so no change during the scan is lost.
    if (!watchDirectory(path, &id, &scope)) {
        return !m_pendingDirectories.isEmpty();
    }
    const std::optional<DirectoryListing> listing = listDirectory(path);
    if (!listing) {
        warnOfUnlisted(ScanFunction, path);
        return !m_pendingDirectories.isEmpty();
    }
    if (scope == AllEntries) {
        warnOfUndecodableEntries(path);
    }
    ScanChanges changes;
    bind(m_fileQuery, {id});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, ScanFunction, "Failed to execute m_fileQuery");
        return false;
    }
    mergeFiles(listing->files, id, scope, &changes);
    bind(m_directoryQuery, {id});
    if (!m_directoryQuery.exec()) {
        warn(m_directoryQuery, ScanFunction, "Failed to execute m_directoryQuery");
        return false;
    }
    mergeDirectories(listing->directories, path, scope, &changes);
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
        if (scope != AllEntries) {
            return;
        }
        if (isStorableName(entry.fileName)) {
            changes->fileInserts.append(
                {directoryId, m_mimeTypes.typeName(QFileInfo(entry.path), entry.isRegular),
                 entry.fileName, entry.modified});
        } else {
            warnOfUnstorableName(ScanFunction, entry.path);
        }
    };
    const auto matched = [&](const FileEntry& entry) {
        if (scope < RemovalsOnly
            && !(entry.modified == m_fileQuery.value(ScannedModificationTime).toDateTime())) {
            changes->fileUpdates.append({entry.modified, m_fileQuery.value(ScannedId)});
        }
    };
    const auto removed = [&] { changes->fileDeletes.append({m_fileQuery.value(ScannedId)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(ScannedFileName).toString().toUtf8(); }, added, matched,
        removed);
    m_fileQuery.finish();
}

void FileManager::mergeDirectories(
    const QVector<DirectoryEntry>& entries, const QString& path, DirectoryScope scope,
    ScanChanges* changes)
{
    const auto rowPath = [&] { return m_directoryQuery.value(Path).toString(); };
    const auto added = [&](const DirectoryEntry& entry) {
        if (scope != AllEntries) {
            return;
        }
        if (isStorableName(entry.path)) {
            changes->newDirectories.append(entry.path);
            m_pendingDirectories.append(entry.path);
        } else {
            warnOfUnstorableName(ScanFunction, entry.path);
        }
    };
    const auto matched = [&](const DirectoryEntry&) { m_pendingDirectories.append(rowPath()); };
    const auto removed = [&] {
        changes->directoryDeletes.append({m_directoryQuery.value(ScannedId)});
    };
    mergeSorted(
        entries, [&] { return m_directoryQuery.next(); },
        [&] { return rowPath().mid(path.size() + 1).toUtf8(); }, added, matched, removed);
    m_directoryQuery.finish();
}

/// Writes the results of a scan in one transaction.
bool FileManager::applyScan(qint64 directoryId, const ScanChanges& changes)
{
    beginTransaction();
    if (!runBatch(
            changes.directoryDeletes, m_directoryDelete, ScanFunction,
            "Failed to execute m_directoryDelete.")) {
        return false;
    }
    SqlBatch inserts;
    SqlBatch relinks;
    if (!separateKnownDirectories(directoryId, changes.newDirectories, &inserts, &relinks)) {
        return false;
    }
    if (!runBatch(inserts, m_directoryInsert, ScanFunction, "Failed to execute m_directoryInsert.")
        || !runBatch(
            relinks, m_directoryParentUpdate, ScanFunction,
            "Failed to execute m_directoryParentUpdate.")
        || !runBatch(
            changes.fileDeletes, m_fileSyncDelete, ScanFunction,
            "Failed to execute m_fileSyncDelete.")
        || !runBatch(
            changes.fileUpdates, m_fileSyncUpdate, ScanFunction,
            "Failed to execute m_fileSyncUpdate.")
        || !runBatch(
            changes.fileInserts, m_fileInsert, ScanFunction, "Failed to execute m_fileInsert.")) {
        return false;
    }
    return commit(ScanFunction);
}

/// Separates new sub-directories, which get a row, from those that have a row under another parent.
///
/// The lookup is finished before its first step, so it never gives a row, and all paths are
/// inserted. If one of them is registered already, its insert fails, and the whole scan of its
/// parent with it.
bool FileManager::separateKnownDirectories(
    qint64 parentId, const QStringList& paths, SqlBatch* inserts, SqlBatch* relinks)
{
    for (const QString& path : paths) {
        bind(m_directoryIdQuery, {path});
        if (!m_directoryIdQuery.exec()) {
            rollback(m_directoryIdQuery, ScanFunction, "Failed to execute m_directoryIdQuery.");
            return false;
        }
        m_directoryIdQuery.finish();
        if (m_directoryIdQuery.next()) {
            relinks->append({parentId, m_directoryIdQuery.value(ScannedId)});
            m_directoryIdQuery.finish();
        } else {
            inserts->append({parentId, path});
        }
    }
    return true;
}
