// SPDX-License-Identifier: BSD-3-Clause
// The scan of a package, which registers its moodset files and index files.
#include "installmanager.h"

#include "content/sqlbatch.h"
#include "content/storablename.h"
#include "indexing/directorylisting.h"
#include "indexing/filemanager.h"
#include "indexing/filename.h"
#include "indexing/sortedmerge.h"
#include "moodsetlog.h"

#include <QDateTime>
#include <QFileInfo>
#include <QVariant>

#include <algorithm>

namespace {

const char* const PackageScanFunction =
    "bool InstallManager::scanPackage(const QString&, const QString&, bool)";

/// The columns of m_fileQuery.
enum PackageColumn : int { PackageFileId, PackageFileName, PackageFileTime };

/// The columns of m_dorselIdQuery.
enum DorselColumn : int { FileId, DorselId };

const QLatin1String MoodsetType("application/x-zavro-moodset");
const QLatin1String IndexType("application/x-zavro-index");

/// The type of a package's file by the end of its name, or a null text if it gets no row.
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
    /// The file name in UTF-8. Entries are sorted by it.
    QByteArray name;
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
    // Only the id counts: a package that is watched already is listed again, too.
    FileManager::fromRegistry()->watchDirectory(path, &id, &scope);
    if (id == 0) {
        return false;
    }
    const std::optional<QVector<PackageEntry>> entries = listPackage(path);
    if (!entries) {
        warnOfUnlisted(PackageScanFunction, path);
        return false;
    }
    PackageChanges changes;
    if (!mergeFiles(*entries, id, force, &changes)) {
        return false;
    }
    beginTransaction();
    if (!applyFiles(changes) || !attachDorselId(*entries, id, dorselId)) {
        return false;
    }
    if (!changes.inserts.isEmpty() || !changes.updates.isEmpty()) {
        refreshInstalls();
    }
    return commit(PackageScanFunction);
}

/// The files of a package that get rows, sorted by name. If no row can store a name, the file is
/// left out and reported. Null where listEntries() returns false.
std::optional<QVector<InstallManager::PackageEntry>> InstallManager::listPackage(
    const QString& path)
{
    QVector<PackageEntry> entries;
    const auto append = [&](const QDirIterator& iterator) {
        const QFileInfo file = iterator.fileInfo();
        const QString fileName = file.fileName();
        const QString type = typeByEnding(fileName);
        if (type.isNull()) {
            return;
        }
        if (!isStorableName(fileName)) {
            warnOfUnstorableName(PackageScanFunction, file.filePath());
            return;
        }
        entries.append({fileName.toUtf8(), fileName, type, file.lastModified()});
    };
    if (!listEntries(path, QDir::Files, append)) {
        return std::nullopt;
    }
    for (const UndecodableEntry& entry : listUndecodable(path)) {
        if (entry.isFile && !typeByEnding(QString::fromLatin1(entry.path)).isNull()) {
            warnOfUndecodableName(PackageScanFunction, entry.path);
        }
    }
    sortByName(&entries);
    return entries;
}

bool InstallManager::mergeFiles(
    const QVector<PackageEntry>& entries, qint64 directoryId, bool force, PackageChanges* changes)
{
    bind(m_fileQuery, {directoryId});
    if (!m_fileQuery.exec()) {
        warn(m_fileQuery, PackageScanFunction, "Failed to execute m_fileQuery");
        return false;
    }
    const auto added = [&](const PackageEntry& entry) {
        changes->inserts.append({directoryId, entry.mimeType, entry.fileName, entry.modified});
    };
    const auto matched = [&](const PackageEntry& entry) {
        if (force || entry.modified != m_fileQuery.value(PackageFileTime).toDateTime()) {
            changes->updates.append({entry.modified, m_fileQuery.value(PackageFileId)});
        }
    };
    const auto removed = [&] { changes->deletes.append({m_fileQuery.value(PackageFileId)}); };
    mergeSorted(
        entries, [&] { return m_fileQuery.next(); },
        [&] { return m_fileQuery.value(PackageFileName).toString().toUtf8(); }, added, matched,
        removed);
    m_fileQuery.finish();
    return true;
}

/// Writes the rows of a package's files, inside the open transaction.
bool InstallManager::applyFiles(const PackageChanges& changes)
{
    return runBatch(
               changes.deletes, m_fileSyncDelete, PackageScanFunction,
               "Failed to execute m_fileSyncDelete.")
        && runBatch(
               changes.updates, m_fileSyncUpdate, PackageScanFunction,
               "Failed to execute m_fileSyncUpdate.")
        && runBatch(
               changes.inserts, m_fileInsert, PackageScanFunction,
               "Failed to execute m_fileInsert.");
}

/// Stores the id of a back cover, if there is one, for all moodset files of a package, inside the
/// open transaction.
bool InstallManager::attachDorselId(
    const QVector<PackageEntry>& entries, qint64 directoryId, const QString& dorselId)
{
    return dorselId.isEmpty()
        || std::all_of(entries.begin(), entries.end(), [&](const PackageEntry& entry) {
               return entry.mimeType != MoodsetType
                   || attachDorselId(directoryId, entry.fileName, dorselId);
           });
}

/// Stores the id for one moodset file. After a failed lookup, the transaction stays open until the
/// next commit.
bool InstallManager::attachDorselId(
    qint64 directoryId, const QString& fileName, const QString& dorselId)
{
    bind(m_dorselIdQuery, {directoryId, fileName});
    if (!m_dorselIdQuery.exec()) {
        warn(m_dorselIdQuery, PackageScanFunction, "Failed to prepare execute m_dorselIdQuery");
        return false;
    }
    if (!m_dorselIdQuery.next()) {
        m_dorselIdQuery.finish();
        qCWarning(moodsetLog) << PackageScanFunction;
        qCWarning(moodsetLog) << "Failed to query latest moodset file data!";
        return true;
    }
    const int fileId = m_dorselIdQuery.value(FileId).toInt();
    const QString stored = m_dorselIdQuery.value(DorselId).toString();
    m_dorselIdQuery.finish();
    if (stored.isEmpty()) {
        bind(m_dorselIdInsert, {fileId, dorselId});
        return runInTransaction(
            m_dorselIdInsert, PackageScanFunction, "Failed to execute m_dorselIdInsert.");
    }
    if (stored != dorselId) {
        bind(m_dorselIdUpdate, {dorselId, fileId});
        return runInTransaction(
            m_dorselIdUpdate, PackageScanFunction, "Failed to execute m_dorselIdUpdate.");
    }
    return true;
}
