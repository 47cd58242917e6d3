// SPDX-License-Identifier: BSD-3-Clause
// What FileManager does when the kernel reports changes in watched directories.
#include "filemanager.h"
#include "inotifyrecord.h"

#include "content/errorwarning.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSqlError>
#include <QVariant>

#include <sys/inotify.h>

namespace {

const char* const Function = "bool FileManager::readEvent()";

bool hasAny(uint32_t mask, uint32_t flags)
{
    return (mask & flags) != 0;
}

} // namespace

struct FileManager::EventChanges
{
    SqlBatch fileUpdates;
    SqlBatch fileInserts;
    SqlBatch directoryInserts;
    SqlBatch fileDeletes;
    SqlBatch directoryDeletes;
};

/// Applies all events that wait; false if that failed, when all of their changes are lost.
bool FileManager::readEvent()
{
    EventChanges changes;
    const QVector<InotifyRecord> records = readInotifyRecords(m_inotifyFd);
    for (const InotifyRecord& record : records) {
        classify(record, &changes);
    }
    if (!applyEvents(changes)) {
        return false;
    }
    announceFileChanges();
    return true;
}

void FileManager::classify(const InotifyRecord& record, EventChanges* changes)
{
    const WatchedDirectory directory = m_watchedDirectories.value(record.watch);
    if (directory.path.isEmpty()) {
        // Dropped events, and what comes after a watch has been removed.
        return;
    }
    const QString path = directory.path + record.name;
    if (hasAny(record.mask, IN_DELETE_SELF | IN_MOVE_SELF)) {
        changes->directoryDeletes.append({directory.id});
        removeWatch(record.watch);
    } else if (hasAny(record.mask, IN_ISDIR)) {
        // Sub-directories that leave report for themselves; those moved in stay unknown.
        if (hasAny(record.mask, IN_CREATE)) {
            m_pendingDirectories.append(path);
            changes->directoryInserts.append({directory.id, path});
        }
    } else if (hasAny(record.mask, IN_MOVED_TO | IN_CREATE)) {
        const QFileInfo file(path);
        changes->fileInserts.append(
            {directory.id, m_mimeTypes.typeName(file), record.name, file.lastModified()});
    } else if (hasAny(record.mask, IN_MOVED_FROM | IN_DELETE)) {
        changes->fileDeletes.append({directory.id, record.name});
    } else if (hasAny(record.mask, IN_MODIFY)) {
        changes->fileUpdates.append({QFileInfo(path).lastModified(), directory.id, record.name});
    }
}

/// Writes the changes of one read in one transaction: an update precedes an insert of the same
/// name, and an insert a deletion.
bool FileManager::applyEvents(const EventChanges& changes)
{
    if (!m_database.transaction()) {
        warnOfError(m_database.lastError(), Function, "Failed to start transation");
    }
    if (!runBatch(
            changes.fileUpdates, m_fileMonitorUpdate, Function,
            "Failed to execute m_fileMonitorUpdate.")
        || !runBatch(changes.fileInserts, m_fileInsert, Function, "Failed to execute m_fileInsert.")
        || !runBatch(
            changes.directoryInserts, m_directoryInsert, Function,
            "Failed to execute m_directoryInsert.")
        || !runBatch(
            changes.fileDeletes, m_fileMonitorDelete, Function,
            "Failed to execute m_fileMonitorDelete.")
        || !runBatch(
            changes.directoryDeletes, m_directoryDelete, Function,
            "Failed to execute m_directoryDelete.")) {
        return false;
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}
