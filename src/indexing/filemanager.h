// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "content/libraryreader.h"
#include "content/sqlbatch.h"
#include "mimetypememory.h"
#include "updateschedule.h"
#include "watchtable.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QSqlQuery>
#include <QStringList>
#include <QVector>

#include <functional>

struct DirectoryEntry;
struct FileEntry;
struct InotifyRecord;

/// Keeps the rows of directories and files the same as the disk.
///
/// A directory is registered once. From then on it is watched, and it is scanned once for each
/// watch: the scan compares its rows with its entries, and after that inotify events bring the
/// changes. All work is done in short turns on the main thread's event loop: the manager posts one
/// event to itself, handles one directory or one turn of a metadata manager for it, and posts the
/// next event while there is more work.
///
/// Directories and files are identified by their paths as they are given. When the row of a
/// directory is deleted, the rows of its files and sub-directories are deleted, too.
class FileManager : public QSocketNotifier, public ContentManager
{
public:
    /// How closely a directory is followed, as stored in `directory.scope`.
    enum DirectoryScope : int {
        /// Files and sub-directories are added, updated and removed.
        AllEntries = LibraryReader::Directory::AllEntries,
        /// Known files are updated and removed; none are added.
        KnownEntries = LibraryReader::Directory::KnownEntries,
        /// Known files are removed, and nothing else happens. Higher values mean the same.
        RemovalsOnly = LibraryReader::Directory::RemovalsOnly
    };

    explicit FileManager(QueryAgentDatabase& database, QObject* parent);

    /// The registry's file manager.
    static FileManager* fromRegistry();

    /// Registers the directory at `path` as a root, or changes the scope of a known one, and queues
    /// it for a scan if `scan` is set. A known directory with this scope stays as it is. Returns
    /// the `directory.id`, or 0 if the directory does not exist, if no row can store its path, or
    /// if the database failed.
    qint64 appendDirectory(const QString& path, DirectoryScope scope, bool scan);
    /// Makes sure that the file at `path` has a row, and that its directory has a row with the
    /// scope KnownEntries or a wider one. Returns the `file.id`, or 0 if the file does not exist,
    /// if no row can store its name, or if the database failed.
    qint64 insertFile(const QString& path);
    /// Watches a registered directory, and gives the id and the scope of its row. True if the
    /// caller should now scan it, even if it cannot be watched. False if the directory is not
    /// registered, when id and scope stay as they are, or if it is watched already.
    bool watchDirectory(const QString& path, qint64* id, DirectoryScope* scope);
    /// Removes all watches; the rows stay.
    void clearWatches();
    /// Makes the event loop read the metadata of changed files soon.
    void scheduleUpdate();

    bool event(QEvent* event) override;
    /// One turn of the metadata managers that still have work. True if there is more to do.
    bool updateMetaData() override;

private:
    struct ScanChanges;
    struct EventChanges;
    /// A statement, and the warning if it fails.
    struct Step
    {
        QSqlQuery& query;
        const char* message;
    };

    bool prepareStatements();
    void queueRootDirectories();
    /// Does what every change of rows requires: schedules an update, announces the change, and
    /// makes all metadata managers run again.
    void announceFileChanges();
    void runUpdate();
    qint64 findOrInsertDirectory(const QString& path, const char* function);
    qint64 findOrInsertFile(qint64 directoryId, const QFileInfo& file, const char* function);
    qint64 findOrInsert(
        const Step& find, const Step& insert, const std::function<void()>& bindInsert,
        const char* function);
    bool lookUpDirectory(const QString& path, qint64* id, DirectoryScope* scope);

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

    QSqlQuery m_fileQuery{m_database};
    QSqlQuery m_fileInsert{m_database};
    QSqlQuery m_fileSyncUpdate{m_database};
    QSqlQuery m_fileSyncDelete{m_database};
    QSqlQuery m_fileMonitorUpdate{m_database};
    QSqlQuery m_fileMonitorDelete{m_database};
    QSqlQuery m_directoryQuery{m_database};
    QSqlQuery m_directoryInsert{m_database};
    QSqlQuery m_directoryDelete{m_database};
    QSqlQuery m_directoryIdQuery{m_database};
    QSqlQuery m_fileIdQuery{m_database};
    QSqlQuery m_directoryAppend{m_database};
    QSqlQuery m_directoryScopeUpdate{m_database};
    QSqlQuery m_directoryParentUpdate{m_database};

    /// Paths that wait for a scan, in the order of arrival.
    QStringList m_pendingDirectories;
    /// Managers whose updateMetaData() must still run.
    QList<ContentManager*> m_scannerManagers;
    MimeTypeMemory m_mimeTypes;
    /// Time since construction, for the log.
    QElapsedTimer m_elapsed;
    int m_inotifyFd = int(socket());
    WatchTable m_watchedDirectories{m_inotifyFd};
    UpdateSchedule m_updates{this};
    /// Whether every statement is prepared.
    bool m_ready = false;
};
