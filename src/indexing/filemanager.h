// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "content/sqlbatch.h"
#include "mimetypememory.h"
#include "updateschedule.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSocketNotifier>
#include <QSqlQuery>
#include <QStringList>
#include <QVector>

struct DirectoryEntry;
struct FileEntry;
struct InotifyRecord;

/// Keeps the rows of directories and files in step with the disk.
///
/// A directory is registered once, watched from then on, and scanned once for each watch: a scan
/// brings its rows in line with its entries, and inotify events keep them so. Everything happens in
/// small steps on the main thread's event loop: the manager posts itself one event, does one
/// directory or one turn of a metadata manager for it, and posts the next while work remains.
///
/// Directories and files go by their paths as given. Deleting a directory's row takes its files and
/// its sub-directories along.
class FileManager : public QSocketNotifier, public ContentManager
{
public:
    /// How closely a directory is followed; kept in `directory.scope`.
    enum DirectoryScope : int {
        AllEntries = 0, ///< files and sub-directories are added, updated and removed
        KnownEntries = 1, ///< known files are updated and removed; none are added
        RemovalsOnly = 2 ///< known files are removed, and nothing else; so for all higher values
    };

    /// A directory with an inotify watch.
    struct WatchedDirectory
    {
        /// The directory's path with a "/" at its end.
        QString path;
        /// `directory.id`
        qint64 id = 0;
    };

    explicit FileManager(QueryAgentDatabase& database, QObject* parent);

    /// The registry's one file manager.
    static FileManager* fromRegistry();

    /// Registers the directory at `path` as a root, or changes the scope of a known one, and queues
    /// it for a scan if `scan` is set. A known directory of that scope is left alone. Returns its
    /// `directory.id`, or 0 if it does not exist or the database failed.
    qint64 appendDirectory(const QString& path, DirectoryScope scope, bool scan);
    /// Makes sure that the file at `path` has a row, and its directory one of scope KnownEntries at
    /// least. Returns its `file.id`, or 0 if it does not exist or the database failed.
    qint64 insertFile(const QString& path);
    /// Watches a registered directory and tells its row's id and scope; true if the caller should
    /// go on and scan it. False if it is not registered, when neither is told, or if it is watched
    /// already. A directory that cannot be watched is to be scanned all the same.
    bool watchDirectory(const QString& path, qint64* id, DirectoryScope* scope);
    /// Removes all watches; the rows stay.
    void clearWatches();
    /// Has the metadata of changed files read as soon as the event loop gets to it.
    void scheduleUpdate();

    bool event(QEvent* event) override;
    /// One turn of the metadata managers that are still to run; true if there is more to do.
    bool updateMetaData() override;

private:
    struct ScanChanges;
    struct EventChanges;

    bool prepareStatements();
    void queueRootDirectories();
    /// What follows any change of rows: an update, an announcement, and the metadata from the
    /// start.
    void announceFileChanges();
    void runUpdate();
    void addWatch(int watch, const WatchedDirectory& directory);
    void removeWatch(int watch);
    void forgetWatch(const QString& path);

    // directoryscan.cpp
    bool scanDirectory();
    void mergeFiles(
        const QVector<FileEntry>& entries, qint64 directoryId, DirectoryScope scope,
        ScanChanges* changes);
    void mergeDirectories(
        const QVector<DirectoryEntry>& entries, const QString& path, DirectoryScope scope,
        ScanChanges* changes);
    bool applyScan(qint64 directoryId, const ScanChanges& changes);
    bool separateKnownDirectories(
        qint64 parentId, const QStringList& paths, SqlBatch* inserts, SqlBatch* relinks);

    // changeevents.cpp
    bool readEvent();
    void classify(const InotifyRecord& record, EventChanges* changes);
    bool applyEvents(const EventChanges& changes);

    QSqlQuery m_fileQuery;
    QSqlQuery m_fileInsert;
    QSqlQuery m_fileSyncUpdate;
    QSqlQuery m_fileSyncDelete;
    QSqlQuery m_fileMonitorUpdate;
    QSqlQuery m_fileMonitorDelete;
    QSqlQuery m_directoryQuery;
    QSqlQuery m_directoryInsert;
    QSqlQuery m_directoryDelete;
    QSqlQuery m_directoryIdQuery;
    QSqlQuery m_fileIdQuery;
    QSqlQuery m_directoryAppend;
    QSqlQuery m_directoryScopeUpdate;
    QSqlQuery m_directoryParentUpdate;

    /// Paths that wait for a scan, first in, first out.
    QStringList m_pendingDirectories;
    /// By watch descriptor.
    QHash<int, WatchedDirectory> m_watchedDirectories;
    /// The descriptors by `WatchedDirectory::path`. Each scan asks whether its directory is
    /// watched, and is not to pass all the others for that.
    QHash<QString, int> m_watches;
    /// Managers whose updateMetaData() is still to run.
    QList<ContentManager*> m_scannerManagers;
    MimeTypeMemory m_mimeTypes;
    /// Time since construction, for the log.
    QElapsedTimer m_elapsed;
    int m_inotifyFd = -1;
    UpdateSchedule m_updates;
    /// Whether every statement is prepared.
    bool m_ready = false;
};

/// Two watches are the same if their paths are; the ids play no part.
bool operator==(
    const FileManager::WatchedDirectory& left, const FileManager::WatchedDirectory& right);
