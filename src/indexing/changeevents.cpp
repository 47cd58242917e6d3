// SPDX-License-Identifier: BSD-3-Clause
// The part of FileManager that handles the kernel's reports of changes in watched directories.
#include "filemanager.h"
#include "filename.h"
#include "inotifyrecord.h"

#include "content/storablename.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <sys/inotify.h>

namespace {

const char* const Function = "bool FileManager::readEvent()";

bool hasAny(uint32_t mask, uint32_t flags)
{
    return (mask & flags) != 0;
}

/// The name of the entry that a record is about. Nothing if no row can store it. This is reported
/// when the entry appears, but not for later events, such as each write to it.
std::optional<QString> readName(const InotifyRecord& record, const QString& directory)
{
    // A directory's row has its path, a file's row its name.
    const bool isDirectory = hasAny(record.mask, IN_ISDIR);
    const bool arrives = hasAny(record.mask, isDirectory ? IN_CREATE : IN_CREATE | IN_MOVED_TO);
    std::optional<QString> name = decodeFileName(record.name);
    if (!name) {
        if (arrives) {
            warnOfUndecodableName(Function, QFile::encodeName(directory) + record.name);
        }
        return std::nullopt;
    }
    if (!isStorableName(isDirectory ? directory + *name : *name)) {
        if (arrives) {
            warnOfUnstorableName(Function, directory + *name);
        }
        return std::nullopt;
    }
    return name;
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

/// Applies all events that are waiting. False on failure; all of their changes are lost then.
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
    const WatchedDirectory directory = m_watchedDirectories.directory(record.watch);
    if (directory.path.isEmpty()) {
        // The kernel has dropped events, or the event is from a watch that was removed.
        return;
    }
    if (hasAny(record.mask, IN_DELETE_SELF | IN_MOVE_SELF)) {
        changes->directoryDeletes.append({directory.id});
        m_watchedDirectories.remove(record.watch);
        return;
    }
    const std::optional<QString> readable = readName(record, directory.path);
    if (!readable) {
        return;
    }
    const QString& name = *readable;
    const QString path = directory.path + name;
    if (hasAny(record.mask, IN_ISDIR)) {
        // A sub-directory that is moved away or deleted has a watch of its own, which reports this.
        // A sub-directory that is moved in stays unknown.
        if (hasAny(record.mask, IN_CREATE)) {
            m_pendingDirectories.append(path);
            changes->directoryInserts.append({directory.id, path});
        }
    } else if (hasAny(record.mask, IN_MOVED_TO | IN_CREATE)) {
        const QFileInfo file(path);
        changes->fileInserts.append(
            {directory.id, m_mimeTypes.typeName(file), name, file.lastModified()});
    } else if (hasAny(record.mask, IN_MOVED_FROM | IN_DELETE)) {
        changes->fileDeletes.append({directory.id, name});
    } else if (hasAny(record.mask, IN_MODIFY)) {
        changes->fileUpdates.append({QFileInfo(path).lastModified(), directory.id, name});
    }
}

/// Writes the changes of one read in one transaction. For the same name, updates come before
/// inserts, and inserts before deletions.
bool FileManager::applyEvents(const EventChanges& changes)
{
    // A failure is reported, but the changes are written anyway.
    openTransaction(Function, "Failed to start transation");
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
    return commit(Function);
}
