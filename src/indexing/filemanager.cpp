// SPDX-License-Identifier: BSD-3-Clause
#include "filemanager.h"

#include "content/errorwarning.h"
#include "content/moodsetcontent.h"
#include "content/storablename.h"
#include "filename.h"
#include "indexinglog.h"

#include <QDateTime>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QVariant>

#include <sys/inotify.h>

namespace {

const char* const FileManagerConstructor =
    "FileManager::FileManager(QueryAgentDatabase&, QObject*)";

/// The columns of the queries for ids. Only the query for directories has the second one.
enum IdColumn : int { RowId, Scope };

/// The column of the query for root directories.
constexpr int RootPath = 0;

/// The id of the row that a statement has inserted. The statement is finished.
qint64 takeInsertedId(QSqlQuery* insertion)
{
    const qint64 id = insertion->lastInsertId().toLongLong();
    insertion->finish();
    return id;
}

/// The events for every scope: the directory or an entry of it has been removed.
constexpr uint32_t RemovalEvents =
    IN_DONT_FOLLOW | IN_MOVE_SELF | IN_DELETE_SELF | IN_DELETE | IN_MOVED_FROM;

uint32_t watchMask(FileManager::DirectoryScope scope)
{
    switch (scope) {
    case FileManager::AllEntries:
        return RemovalEvents | IN_MODIFY | IN_CREATE | IN_MOVED_TO;
    case FileManager::KnownEntries:
        return RemovalEvents | IN_MODIFY;
    case FileManager::RemovalsOnly:
        break;
    }
    // A database may hold higher values, which mean the same.
    return RemovalEvents;
}

} // namespace

FileManager::FileManager(QueryAgentDatabase& database, QObject* parent)
    : QSocketNotifier(inotify_init(), QSocketNotifier::Read, parent)
    , ContentManager(database)
{
    m_elapsed.start();
    if (m_inotifyFd < 0) {
        qCWarning(indexingLog) << FileManagerConstructor;
        qCWarning(indexingLog) << "Failed to initialize inotify";
        return;
    }
    if (!openTransaction(FileManagerConstructor) || !prepareStatements()) {
        return;
    }
    // The prepared statements stay, even if the transaction fails.
    commit(FileManagerConstructor);
    m_ready = true;
    queueRootDirectories();
    m_updates.request();
}

FileManager* FileManager::fromRegistry()
{
    return static_cast<FileManager*>(managerFromType(MoodsetContent::File));
}

bool FileManager::prepareStatements()
{
    const QString directoryInsert =
        QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, %1);")
            .arg(AllEntries);
    const bool prepared = prepare(
        {{m_fileQuery,
          QStringLiteral("SELECT id, fileName, modificationTime FROM file "
                         "WHERE directoryId = ? ORDER BY fileName ASC;"),
          "Failed to prepare m_fileQuery."},
         {m_fileInsert,
          QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                         "modificationTime, permissions, metadataCurrent) "
                         "VALUES (?, ?, ?, ?, 3, 0);"),
          "Failed to prepare m_fileInsert."},
         {m_fileSyncUpdate,
          QStringLiteral("UPDATE file SET modificationTime = ?, metadataCurrent = 0 "
                         "WHERE id = ?;"),
          "Failed to prepare m_fileSyncUpdate."},
         {m_fileSyncDelete, QStringLiteral("DELETE FROM file WHERE id = ?;"),
          "Failed to prepare m_fileSyncDelete."},
         {m_fileMonitorUpdate,
          QStringLiteral("UPDATE file SET modificationTime = ?, metadataCurrent = 0 "
                         "WHERE directoryId = ? AND fileName = ?;"),
          "Failed to prepare m_fileMonitorUpdate."},
         {m_fileMonitorDelete,
          QStringLiteral("DELETE FROM file WHERE directoryId = ? AND fileName = ?;"),
          "Failed to prepare m_fileMonitorDelete."},
         {m_directoryQuery,
          QStringLiteral("SELECT id, path FROM directory WHERE parentId = ? "
                         "ORDER BY path ASC;"),
          "Failed to prepare m_directoryQuery."},
         {m_directoryInsert, directoryInsert, "Failed to prepare m_directoryInsert."},
         {m_directoryDelete, QStringLiteral("DELETE FROM directory WHERE id = ?;"),
          "Failed to prepare m_directoryDelete."},
         {m_directoryIdQuery, QStringLiteral("SELECT id, scope FROM directory WHERE path = ?;"),
          "Failed to prepare m_directoryIdQuery."},
         {m_fileIdQuery,
          QStringLiteral("SELECT id FROM file WHERE directoryId = ? AND fileName = ?;"),
          "Failed to prepare m_fileIdQuery."},
         {m_directoryAppend, QStringLiteral("INSERT INTO directory (path, scope) VALUES(?, ?);"),
          "Failed to prepare m_directoryAppend."}},
        FileManagerConstructor);
    // The second statement fails without a report and leaves the transaction open.
    return prepared
        && m_directoryScopeUpdate.prepare(
            QStringLiteral("UPDATE directory SET scope = ? WHERE id = ?;"))
        && prepare(
               {{m_directoryParentUpdate,
                 QStringLiteral("UPDATE directory SET parentId = ? WHERE id = ?;"),
                 "Failed to prepare m_directoryParentUpdate."}},
               FileManagerConstructor);
}

/// The first scan after a start begins with all roots, and reaches the whole tree through the rows
/// that it finds.
void FileManager::queueRootDirectories()
{
    QSqlQuery query(m_database);
    if (!query.exec(QStringLiteral("SELECT path FROM directory WHERE parentId IS NULL;"))) {
        warnOfError(query.lastError(), FileManagerConstructor, "Failed to execute root path query");
        return;
    }
    while (query.next()) {
        m_pendingDirectories.append(query.value(RootPath).toString());
    }
}

qint64 FileManager::appendDirectory(const QString& path, DirectoryScope scope, bool scan)
{
    const char* const function =
        "qint64 FileManager::appendDirectory(const QString&, FileManager::DirectoryScope, bool)";
    if (!m_ready || !QFile::exists(path)) {
        return 0;
    }
    if (!isStorableName(path)) {
        warnOfUnstorableName(function, path);
        return 0;
    }
    qint64 id = 0;
    DirectoryScope storedScope = scope;
    if (!lookUpDirectory(path, &id, &storedScope)) {
        warn(m_directoryIdQuery, function, "Failed to execute m_directoryIdQuery");
        return 0;
    }
    if (id == 0) {
        bind(m_directoryAppend, {path, int(scope)});
        if (!m_directoryAppend.exec()) {
            warn(m_directoryAppend, function, "Failed to execute m_directoryAppend");
            return 0;
        }
        id = takeInsertedId(&m_directoryAppend);
    } else {
        if (storedScope == scope) {
            return id;
        }
        bind(m_directoryScopeUpdate, {int(scope), id});
        if (!run(m_directoryScopeUpdate, function, "Failed to execute m_directoryScopeUpdate.")) {
            return id;
        }
        // The next scan adds a watch with the mask of the new scope.
        m_watchedDirectories.remove(path);
    }
    if (scan) {
        m_pendingDirectories.append(path);
        m_updates.request();
    }
    return id;
}

qint64 FileManager::insertFile(const QString& path)
{
    const char* const function = "qint64 FileManager::insertFile(const QString&)";
    const QFileInfo file(path);
    if (!file.exists()) {
        return 0;
    }
    const QString directory = file.absolutePath();
    if (!isStorableName(directory) || !isStorableName(file.fileName())) {
        warnOfUnstorableName(function, path);
        return 0;
    }
    beginTransaction();
    const qint64 directoryId = findOrInsertDirectory(directory, function);
    if (directoryId == 0) {
        return 0;
    }
    // A new directory gets a watch this way. A watched one leaves the queue again at once.
    m_pendingDirectories.append(directory);
    m_updates.request();

    const qint64 id = findOrInsertFile(directoryId, file, function);
    return id != 0 && commit(function) ? id : 0;
}

qint64 FileManager::findOrInsertDirectory(const QString& path, const char* function)
{
    bind(m_directoryIdQuery, {path});
    return findOrInsert(
        {m_directoryIdQuery, "Failed to execute m_directoryIdQuery."},
        {m_directoryAppend, "Failed to execute m_directoryAppend."},
        [&] {
            bind(m_directoryAppend, {path, int(KnownEntries)});
        },
        function);
}

qint64 FileManager::findOrInsertFile(
    qint64 directoryId, const QFileInfo& file, const char* function)
{
    bind(m_fileIdQuery, {directoryId, file.fileName()});
    return findOrInsert(
        {m_fileIdQuery, "Failed to execute m_fileIdQuery."},
        {m_fileInsert, "Failed to execute m_fileInsert."},
        [&] {
            bind(
                m_fileInsert,
                {directoryId, m_mimeTypes.typeName(file), file.fileName(), file.lastModified()});
        },
        function);
}

/// The id of the row that the bound query `find` gives. If there is none, `bindInsert` binds
/// `insert`, and this returns the id of the inserted row. A failure is reported and rolled back,
/// and gives 0.
qint64 FileManager::findOrInsert(
    const Step& find, const Step& insert, const std::function<void()>& bindInsert,
    const char* function)
{
    if (!find.query.exec()) {
        rollback(find.query, function, find.message);
        return 0;
    }
    const qint64 found = find.query.next() ? find.query.value(RowId).toLongLong() : 0;
    find.query.finish();
    if (found != 0) {
        return found;
    }
    bindInsert();
    if (!insert.query.exec()) {
        rollback(insert.query, function, insert.message);
        return 0;
    }
    return takeInsertedId(&insert.query);
}

/// Gives the row of a directory, and changes nothing if it has none. On failure, this returns false
/// without a report.
bool FileManager::lookUpDirectory(const QString& path, qint64* id, DirectoryScope* scope)
{
    bind(m_directoryIdQuery, {path});
    if (!m_directoryIdQuery.exec()) {
        return false;
    }
    if (m_directoryIdQuery.next()) {
        *id = m_directoryIdQuery.value(RowId).toLongLong();
        *scope = static_cast<DirectoryScope>(m_directoryIdQuery.value(Scope).toInt());
    }
    m_directoryIdQuery.finish();
    return true;
}

bool FileManager::watchDirectory(const QString& path, qint64* id, DirectoryScope* scope)
{
    qint64 known = 0;
    if (!lookUpDirectory(path, &known, scope)) {
        warnOfError(
            m_directoryIdQuery.lastError(),
            "bool FileManager::watchDirectory(const QString&, qint64*, "
            "FileManager::DirectoryScope*)",
            "Failed to execute m_directoryIdQuery.");
        return false;
    }
    if (known == 0) {
        return false;
    }
    *id = known;
    if (m_watchedDirectories.contains(path)) {
        return false;
    }
    const int watch = m_watchedDirectories.add(path, *id, watchMask(*scope));
    if (watch < 0) {
        qCWarning(indexingLog) << "Failed to add listener" << watch << path;
    }
    return true;
}

void FileManager::clearWatches()
{
    m_watchedDirectories.clear();
}

void FileManager::scheduleUpdate()
{
    m_scannerManagers = scannerManagers();
    m_updates.request();
}

void FileManager::announceFileChanges()
{
    m_updates.request();
    notifyContentChanged(MoodsetContent::File);
    m_scannerManagers = scannerManagers();
}

bool FileManager::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::SockAct:
        readEvent();
        return true;
    case QEvent::UpdateRequest:
        runUpdate();
        return true;
    default:
        return QSocketNotifier::event(event);
    }
}

/// One turn: a directory of the queue or, if there is none, one turn of a metadata manager.
void FileManager::runUpdate()
{
    const bool hasMore = scanDirectory() || updateMetaData();
    m_updates.finishStep(hasMore);
    if (!hasMore) {
        qCDebug(indexingLog) << "FileManager idle in" << m_elapsed.elapsed();
    }
}

bool FileManager::updateMetaData()
{
    return updateFirst(&m_scannerManagers);
}
