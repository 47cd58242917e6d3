// SPDX-License-Identifier: BSD-3-Clause
#include "filemanager.h"

#include "content/errorwarning.h"
#include "content/moodsetcontent.h"

#include <QDateTime>
#include <QDebug>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QVariant>

#include <sys/inotify.h>

namespace {

const char* const Constructor = "FileManager::FileManager(QueryAgentDatabase&, QObject*)";

const QLatin1Char Separator('/');

/// What a watch reports at every scope: that the directory or something in it is gone.
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
    // Also for the higher values that a database may hold.
    return RemovalEvents;
}

} // namespace

bool operator==(
    const FileManager::WatchedDirectory& left, const FileManager::WatchedDirectory& right)
{
    return left.path == right.path;
}

FileManager::FileManager(QueryAgentDatabase& database, QObject* parent)
    : QSocketNotifier(inotify_init(), QSocketNotifier::Read, parent)
    , ContentManager(database)
    , m_fileQuery(m_database)
    , m_fileInsert(m_database)
    , m_fileSyncUpdate(m_database)
    , m_fileSyncDelete(m_database)
    , m_fileMonitorUpdate(m_database)
    , m_fileMonitorDelete(m_database)
    , m_directoryQuery(m_database)
    , m_directoryInsert(m_database)
    , m_directoryDelete(m_database)
    , m_directoryIdQuery(m_database)
    , m_fileIdQuery(m_database)
    , m_directoryAppend(m_database)
    , m_directoryScopeUpdate(m_database)
    , m_directoryParentUpdate(m_database)
    , m_inotifyFd(static_cast<int>(socket()))
    , m_updates(this)
{
    m_elapsed.start();
    if (m_inotifyFd < 0) {
        qWarning() << Constructor;
        qWarning() << "Failed to initialize inotify";
        return;
    }
    if (!openTransaction(Constructor) || !prepareStatements()) {
        return;
    }
    m_database.commit();
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
    return prepare(
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
          "Failed to prepare m_directoryAppend."},
         // Fails without a word and leaves the transaction open.
         {m_directoryScopeUpdate, QStringLiteral("UPDATE directory SET scope = ? WHERE id = ?;"),
          nullptr},
         {m_directoryParentUpdate,
          QStringLiteral("UPDATE directory SET parentId = ? WHERE id = ?;"),
          "Failed to prepare m_directoryParentUpdate."}},
        Constructor);
}

/// The first scan after a start goes through all roots, and from the rows that it finds through the
/// whole tree.
void FileManager::queueRootDirectories()
{
    QSqlQuery query(m_database);
    if (!query.exec(QStringLiteral("SELECT path FROM directory WHERE parentId IS NULL;"))) {
        warnOfError(query.lastError(), Constructor, "Failed to execute root path query");
        return;
    }
    while (query.next()) {
        m_pendingDirectories.append(query.value(0).toString());
    }
}

qint64 FileManager::appendDirectory(const QString& path, DirectoryScope scope, bool scan)
{
    const char* const function =
        "qint64 FileManager::appendDirectory(const QString&, FileManager::DirectoryScope, bool)";
    if (!m_ready || !QFile::exists(path)) {
        return 0;
    }
    bind(m_directoryIdQuery, {path});
    if (!m_directoryIdQuery.exec()) {
        warn(m_directoryIdQuery, function, "Failed to execute m_directoryIdQuery");
        return 0;
    }
    qint64 id = 0;
    if (m_directoryIdQuery.next()) {
        id = m_directoryIdQuery.value(0).toLongLong();
        const int storedScope = m_directoryIdQuery.value(1).toInt();
        m_directoryIdQuery.finish();
        if (storedScope == scope) {
            return id;
        }
        bind(m_directoryScopeUpdate, {static_cast<int>(scope), id});
        if (!run(m_directoryScopeUpdate, function, "Failed to execute m_directoryScopeUpdate.")) {
            return id;
        }
        forgetWatch(path);
    } else {
        m_directoryIdQuery.finish();
        bind(m_directoryAppend, {path, static_cast<int>(scope)});
        if (!m_directoryAppend.exec()) {
            warn(m_directoryAppend, function, "Failed to execute m_directoryAppend");
            return 0;
        }
        id = m_directoryAppend.lastInsertId().toLongLong();
        m_directoryAppend.finish();
    }
    if (scan) {
        m_pendingDirectories.append(path);
        m_updates.request();
    }
    return id;
}

/// The kernel gives the same descriptor for another path of the same directory, which then takes
/// the place of the first.
void FileManager::addWatch(int watch, const WatchedDirectory& directory)
{
    m_watches.remove(m_watchedDirectories.value(watch).path);
    m_watchedDirectories.insert(watch, directory);
    m_watches.insert(directory.path, watch);
}

void FileManager::removeWatch(int watch)
{
    m_watches.remove(m_watchedDirectories.take(watch).path);
    inotify_rm_watch(m_inotifyFd, watch);
}

/// The next scan of the directory then adds a watch with the mask of its new scope.
void FileManager::forgetWatch(const QString& path)
{
    const auto watch = m_watches.constFind(path + Separator);
    if (watch != m_watches.constEnd()) {
        removeWatch(*watch);
    }
}

qint64 FileManager::insertFile(const QString& path)
{
    const char* const function = "qint64 FileManager::insertFile(const QString&)";
    const QFileInfo file(path);
    if (!file.exists()) {
        return 0;
    }
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    const QString directory = file.absolutePath();
    bind(m_directoryIdQuery, {directory});
    if (!m_directoryIdQuery.exec()) {
        rollback(m_directoryIdQuery, function, "Failed to execute m_directoryIdQuery.");
        return 0;
    }
    qint64 directoryId = 0;
    if (m_directoryIdQuery.next()) {
        directoryId = m_directoryIdQuery.value(0).toLongLong();
        m_directoryIdQuery.finish();
    } else {
        m_directoryIdQuery.finish();
        bind(m_directoryAppend, {directory, static_cast<int>(KnownEntries)});
        if (!m_directoryAppend.exec()) {
            rollback(m_directoryAppend, function, "Failed to execute m_directoryAppend.");
            return 0;
        }
        directoryId = m_directoryAppend.lastInsertId().toLongLong();
        m_directoryAppend.finish();
    }
    // Gets a new directory watched; a watched one leaves the queue again at once.
    m_pendingDirectories.append(directory);
    m_updates.request();

    bind(m_fileIdQuery, {directoryId, file.fileName()});
    if (!m_fileIdQuery.exec()) {
        rollback(m_fileIdQuery, function, "Failed to execute m_fileIdQuery.");
        return 0;
    }
    qint64 id = 0;
    if (m_fileIdQuery.next()) {
        id = m_fileIdQuery.value(0).toLongLong();
        m_fileIdQuery.finish();
    } else {
        m_fileIdQuery.finish();
        bind(
            m_fileInsert,
            {directoryId, m_mimeTypes.typeName(file), file.fileName(), file.lastModified()});
        if (!m_fileInsert.exec()) {
            rollback(m_fileInsert, function, "Failed to execute m_fileInsert.");
            return 0;
        }
        id = m_fileInsert.lastInsertId().toLongLong();
        m_fileInsert.finish();
    }
    m_database.commit();
    return id;
}

bool FileManager::watchDirectory(const QString& path, qint64* id, DirectoryScope* scope)
{
    const QString watchedPath = path + Separator;
    bind(m_directoryIdQuery, {path});
    if (!m_directoryIdQuery.exec()) {
        warnOfError(
            m_directoryIdQuery.lastError(),
            "bool FileManager::watchDirectory(const QString&, qint64*, "
            "FileManager::DirectoryScope*)",
            "Failed to execute m_directoryIdQuery.");
        return false;
    }
    if (!m_directoryIdQuery.next()) {
        m_directoryIdQuery.finish();
        return false;
    }
    *id = m_directoryIdQuery.value(0).toLongLong();
    *scope = static_cast<DirectoryScope>(m_directoryIdQuery.value(1).toInt());
    m_directoryIdQuery.finish();
    if (m_watches.contains(watchedPath)) {
        return false;
    }
    const int watch = inotify_add_watch(m_inotifyFd, path.toUtf8().constData(), watchMask(*scope));
    if (watch < 0) {
        qWarning() << "Failed to add listener" << watch << path;
    } else {
        addWatch(watch, {watchedPath, *id});
    }
    return true;
}

void FileManager::clearWatches()
{
    for (auto it = m_watchedDirectories.keyBegin(); it != m_watchedDirectories.keyEnd(); ++it) {
        inotify_rm_watch(m_inotifyFd, *it);
    }
    m_watchedDirectories.clear();
    m_watches.clear();
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

/// One step: a directory of the queue, or else one turn of a metadata manager.
void FileManager::runUpdate()
{
    const bool hasMore = scanDirectory() || updateMetaData();
    m_updates.finishStep(hasMore);
    if (!hasMore) {
        qDebug() << "FileManager idle in" << m_elapsed.elapsed();
    }
}

bool FileManager::updateMetaData()
{
    return updateFirst(&m_scannerManagers);
}
