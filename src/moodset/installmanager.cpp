// SPDX-License-Identifier: BSD-3-Clause
#include "installmanager.h"

#include "content/moodsetcontent.h"
#include "indexing/filemanager.h"
#include "moodsetlog.h"

#include <QEvent>

namespace {

const char* const InstallConstructor =
    "InstallManager::InstallManager(QueryAgentDatabase&, QObject*)";

} // namespace

InstallManager::InstallManager(QueryAgentDatabase& database, QObject* parent)
    : QObject(parent)
    , ContentManager(database)
{
    m_elapsed.start();
    // A statement that could not be prepared fails when it is used.
    prepareStatements();
    refreshInstalls();
}

InstallManager* InstallManager::fromRegistry()
{
    return static_cast<InstallManager*>(managerFromType(MoodsetContent::Install));
}

bool InstallManager::prepareStatements()
{
    return prepare(
        {{m_fileQuery,
          QStringLiteral("SELECT id, fileName, modificationTime FROM file "
                         "WHERE directoryId = ? ORDER BY fileName ASC;"),
          "Failed to prepare m_fileQuery."},
         {m_fileInsert,
          QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                         "modificationTime, permissions, metadataCurrent) "
                         "VALUES(?, ?, ?, ?, 1, 0)"),
          "Failed to prepare m_fileInsert."},
         {m_fileSyncUpdate,
          QStringLiteral("UPDATE file SET modificationTime = ?, permissions = 1, "
                         "metadataCurrent = 0 WHERE id = ?;"),
          "Failed to prepare m_fileSyncUpdate."},
         {m_fileSyncDelete, QStringLiteral("DELETE FROM file WHERE id = ?;"),
          "Failed to prepare m_fileSyncDelete."},
         {m_directoryIdQuery, QStringLiteral("SELECT id FROM directory WHERE path = ?;"),
          "Failed to prepare m_directoryIdQuery."},
         {m_directoryInsert,
          QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, ?);"),
          "Failed to prepare m_directoryInsert."},
         {m_directoryUpdate,
          QStringLiteral("UPDATE directory SET parentId = ?, scope = ? WHERE id = ?;"),
          "Failed to prepare m_directoryUpdate."},
         {m_directoryDelete, QStringLiteral("DELETE FROM directory WHERE id = ?;"),
          "Failed to prepare m_directoryDelete."},
         {m_dorselIdQuery,
          QStringLiteral("SELECT file.id, dorselid.dorselId FROM file "
                         "LEFT JOIN dorselid ON file.id = dorselid.fileId "
                         "WHERE directoryId = ? AND fileName = ?;"),
          "Failed to prepare m_dorselIdQuery."},
         {m_dorselIdInsert, QStringLiteral("INSERT INTO dorselid (fileId, dorselId) VALUES(?, ?)"),
          "Failed to prepare m_dorselIdInsert."},
         {m_dorselIdUpdate, QStringLiteral("UPDATE dorselid SET dorselId = ? WHERE fileId = ?;"),
          "Failed to prepare m_dorselIdUpdate."}},
        InstallConstructor);
}

QStringList InstallManager::installPaths()
{
    return {QStringLiteral("/usr/share/moodset"), QStringLiteral("/usr/share/sounds")};
}

void InstallManager::appendDirectory(const QString& path)
{
    if (FileManager::fromRegistry()->appendDirectory(path, FileManager::KnownEntries, true) != 0) {
        m_installDirectories.append(path);
        m_updates.request();
    }
}

bool InstallManager::install(const QString& path, const QString& dorselId, bool force)
{
    return FileManager::fromRegistry()->appendDirectory(path, FileManager::RemovalsOnly, true) != 0
        && scanPackage(path, dorselId, force);
}

void InstallManager::refreshInstalls()
{
    m_metadataManagers = {
        managerFromType(MoodsetContent::Moodset), managerFromType(MoodsetContent::Index)};
    m_updates.request();
}

bool InstallManager::event(QEvent* event)
{
    if (event->type() != QEvent::UpdateRequest) {
        return QObject::event(event);
    }
    const bool hasMore = runStep();
    m_updates.finishStep(hasMore);
    if (!hasMore) {
        qCDebug(moodsetLog) << "InstallManager idle in" << m_elapsed.elapsed();
    }
    return true;
}

/// Handles one install directory, or else one package, or else one turn of the managers that read
/// files. True if there may be more work.
bool InstallManager::runStep()
{
    if (scanInstallDirectory()) {
        return true;
    }
    if (!m_packageDirectories.isEmpty()) {
        // The next package is handled even if this one fails.
        install(m_packageDirectories.takeFirst(), QString(), false);
        return true;
    }
    return updateMetaData();
}

bool InstallManager::updateMetaData()
{
    return updateFirst(&m_metadataManagers);
}
