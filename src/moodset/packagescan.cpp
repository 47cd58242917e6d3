// SPDX-License-Identifier: BSD-3-Clause
// The scan of a package, which registers its moodset files and index files.
#include "installmanager.h"

#include "content/sqlbatch.h"
#include "indexing/filemanager.h"
#include "indexing/sortedmerge.h"

#include <QDateTime>
#include <QDebug>
#include <QDirIterator>
#include <QFileInfo>
#include <QVariant>

namespace {

const char* const Function =
    "bool InstallManager::scanPackage(const QString&, const QString&, bool)";

const QLatin1String MoodsetType("application/x-zavro-moodset");
const QLatin1String IndexType("application/x-zavro-index");

/// The type of a package's file by its ending, or a null text for one that gets no row.
QString typeByEnding(const QString& fileName)
{
    if (fileName.endsWith(QLatin1String(".moodset"))) {
        return MoodsetType;
    }
    if (fileName.endsWith(QLatin1String(".index"))) {
        return IndexType;
    }
    return QString();
}

} // namespace

/// A file of a package.
struct InstallManager::PackageEntry
{
    /// The file name in UTF-8, by which entries are sorted.
    QByteArray name;
    QString path;
    QString fileName;
    QString mimeType;
    QDateTime modified;
};

struct InstallManager::PackageChanges
{
    SqlBatch deletes;
    SqlBatch updates;
    SqlBatch inserts;
};

bool InstallManager::scanPackage(const QString& path, const QString& dorselId, bool force)
{
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::KnownEntries;
    // Only the id counts: a package that is watched already is listed again.
    FileManager::fromRegistry()->watchDirectory(path, &id, &scope);
    if (id == 0) {
        return false;
    }
    QVector<PackageEntry> entries;
    QStringList moodsetFiles;
    listPackage(path, &entries, &moodsetFiles);
    PackageChanges changes;
    if (!mergeFiles(entries, id, force, &changes) || !applyFiles(changes)) {
        return false;
    }
    if (!dorselId.isEmpty()) {
        for (const QString& fileName : qAsConst(moodsetFiles)) {
            if (!attachDorselId(id, fileName, dorselId)) {
                return false;
            }
        }
    }
    if (!changes.inserts.isEmpty() || !changes.updates.isEmpty()) {
        refreshInstalls();
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}

/// The files of a package that get rows, sorted by name, and the names of the moodset files among
/// them.
void InstallManager::listPackage(
    const QString& path, QVector<PackageEntry>* entries, QStringList* moodsetFiles)
{
    QDirIterator iterator(path, QDir::Files);
    while (iterator.hasNext()) {
        const QString entryPath = iterator.next();
        const QFileInfo file = iterator.fileInfo();
        const QString fileName = file.fileName();
        const QString type = typeByEnding(fileName);
        if (type.isNull() || file.isDir()) {
            continue;
        }
        entries->append({fileName.toUtf8(), entryPath, fileName, type, file.lastModified()});
        if (type == MoodsetType) {
            moodsetFiles->append(fileName);
        }
    }
    sortByName(entries);
}

bool InstallManager::mergeFiles(
    const QVector<PackageEntry>& entries, qint64 directoryId, bool force, PackageChanges* changes)
{
    bind(m_fileQuery, {directoryId});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, Function, "Failed to execute m_fileQuery");
        return false;
    }
    const auto added = [&](const PackageEntry& entry) {
        changes->inserts.append({directoryId, entry.mimeType, entry.fileName, entry.modified});
    };
    const auto matched = [&](const PackageEntry& entry) {
        if (force || entry.modified != m_fileQuery.value(2).toDateTime()) {
            changes->updates.append({entry.modified, m_fileQuery.value(0)});
        }
    };
    const auto removed = [&] { changes->deletes.append({m_fileQuery.value(0)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(1).toString().toUtf8(); }, added, matched, removed);
    m_fileQuery.finish();
    return true;
}

/// Writes the rows of a package's files into a transaction that stays open after a success.
bool InstallManager::applyFiles(const PackageChanges& changes)
{
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    return runBatch(
               changes.deletes, m_fileSyncDelete, Function, "Failed to execute m_fileSyncDelete.")
        && runBatch(
               changes.updates, m_fileSyncUpdate, Function, "Failed to execute m_fileSyncUpdate.")
        && runBatch(changes.inserts, m_fileInsert, Function, "Failed to execute m_fileInsert.");
}

/// Writes the id of a back cover for a moodset file, inside the open transaction. A lookup that
/// fails leaves the transaction open; the next commit closes it.
bool InstallManager::attachDorselId(
    qint64 directoryId, const QString& fileName, const QString& dorselId)
{
    bind(m_dorselIdQuery, {directoryId, fileName});
    if (!m_dorselIdQuery.exec()) {
        warn(m_dorselIdQuery, Function, "Failed to prepare execute m_dorselIdQuery");
        return false;
    }
    if (!m_dorselIdQuery.next()) {
        m_dorselIdQuery.finish();
        qWarning() << Function;
        qWarning() << "Failed to query latest moodset file data!";
        return true;
    }
    const int fileId = m_dorselIdQuery.value(0).toInt();
    const QString stored = m_dorselIdQuery.value(1).toString();
    m_dorselIdQuery.finish();
    if (stored.isEmpty()) {
        bind(m_dorselIdInsert, {fileId, dorselId});
        return runInTransaction(m_dorselIdInsert, Function, "Failed to execute m_dorselIdInsert.");
    }
    if (stored != dorselId) {
        bind(m_dorselIdUpdate, {dorselId, fileId});
        return runInTransaction(m_dorselIdUpdate, Function, "Failed to execute m_dorselIdUpdate.");
    }
    return true;
}
