// SPDX-License-Identifier: BSD-3-Clause
// The scan of an install directory, which finds the packages in it.
#include "installmanager.h"

#include "content/sqlbatch.h"
#include "content/storablename.h"
#include "indexing/directorylisting.h"
#include "indexing/filemanager.h"
#include "indexing/filename.h"
#include "indexing/sortedmerge.h"

#include <QVariant>

namespace {

const char* const DirectoryScanFunction = "bool InstallManager::scanInstallDirectory()";

/// The columns of both queries for directories.
enum DirectoryColumn : int { DirectoryId, DirectoryPath };

/// A package in a listing, sorted by name.
struct Package
{
    QByteArray name;
    QString path;
};

/// The name of an entry in `directory`, from its path or from the path of anything below it.
QByteArray nameBelow(const QString& directory, const QString& path)
{
    return path.mid(directory.size() + 1).toUtf8();
}

/// The sub-directories of an install directory, and symbolic links to directories. If no row can
/// store a name, the directory is left out and reported. Null where listEntries() returns false.
std::optional<QVector<Package>> listPackages(const QString& path)
{
    QVector<Package> packages;
    const auto append = [&](const QDirIterator& iterator) {
        const QString package = iterator.filePath();
        if (isStorableName(package)) {
            packages.append({nameBelow(path, package), package});
        } else {
            warnOfUnstorableName(DirectoryScanFunction, package);
        }
    };
    if (!listEntries(path, QDir::Dirs | QDir::NoDot | QDir::NoDotDot, append)) {
        return std::nullopt;
    }
    for (const UndecodableEntry& entry : listUndecodable(path)) {
        if (entry.isDirectory) {
            warnOfUndecodableName(DirectoryScanFunction, entry.path);
        }
    }
    sortByName(&packages);
    return packages;
}

} // namespace

/// Handles the first install directory of the queue. True if this succeeded or more are waiting.
bool InstallManager::scanInstallDirectory()
{
    if (m_installDirectories.isEmpty()) {
        return false;
    }
    const QString path = m_installDirectories.takeFirst();
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::KnownEntries;
    // Only the id counts: a directory that is watched already is listed again, too.
    FileManager::fromRegistry()->watchDirectory(path, &id, &scope);
    if (id == 0) {
        return !m_installDirectories.isEmpty();
    }
    QStringList newPackages;
    SqlBatch deletes;
    if (!mergePackages(path, id, &newPackages, &deletes)
        || !applyInstallScan(id, newPackages, deletes)) {
        return false;
    }
    if (!m_packageDirectories.isEmpty()) {
        m_updates.request();
    }
    return true;
}

/// Queues all packages of a directory, and finds the new ones and the rows to delete.
bool InstallManager::mergePackages(
    const QString& path, qint64 directoryId, QStringList* newPackages, SqlBatch* deletes)
{
    const std::optional<QVector<Package>> packages = listPackages(path);
    if (!packages) {
        warnOfUnlisted(DirectoryScanFunction, path);
        return false;
    }
    QSqlQuery rows(m_database);
    if (!rows.prepare(QStringLiteral(
            "SELECT id, path FROM directory WHERE parentId = ? ORDER BY path ASC;"))) {
        warn(rows, DirectoryScanFunction, "Failed to prepare installs query");
        return false;
    }
    bind(rows, {directoryId});
    if (!rows.exec()) {
        warn(rows, DirectoryScanFunction, "Failed to prepare execute query");
        return false;
    }
    const auto rowPath = [&] { return rows.value(DirectoryPath).toString(); };
    const auto added = [&](const Package& package) {
        newPackages->append(package.path);
        m_packageDirectories.append(package.path);
    };
    const auto matched = [&](const Package&) { m_packageDirectories.append(rowPath()); };
    const auto removed = [&] { deletes->append({rows.value(DirectoryId)}); };
    mergeSorted(
        *packages, [&] { return rows.next(); }, [&] { return nameBelow(path, rowPath()); }, added,
        matched, removed);
    rows.finish();
    return true;
}

/// Writes the results of the scan in one transaction.
bool InstallManager::applyInstallScan(
    qint64 directoryId, QStringList newPackages, const SqlBatch& deletes)
{
    beginTransaction();
    QVector<qint64> known;
    if (!runBatch(
            deletes, m_directoryDelete, DirectoryScanFunction,
            "Failed to execute m_directoryDelete.")
        || !separateKnownPackages(&newPackages, &known)) {
        return false;
    }
    const int scope = FileManager::RemovalsOnly;
    for (const QString& path : qAsConst(newPackages)) {
        bind(m_directoryInsert, {directoryId, path, scope});
        if (!runInTransaction(
                m_directoryInsert, DirectoryScanFunction, "Failed to execute m_directoryInsert.")) {
            return false;
        }
    }
    // If a package was registered by itself, the install directory becomes its parent.
    for (const qint64 id : qAsConst(known)) {
        bind(m_directoryUpdate, {directoryId, scope, id});
        if (!runInTransaction(
                m_directoryUpdate, DirectoryScanFunction, "Failed to execute m_directoryUpdate.")) {
            return false;
        }
    }
    return commit(DirectoryScanFunction);
}

/// Removes the packages that have a row already from the new ones. After a failure, the transaction
/// stays open until the next commit.
bool InstallManager::separateKnownPackages(QStringList* newPackages, QVector<qint64>* known)
{
    QStringList unknown;
    for (const QString& path : qAsConst(*newPackages)) {
        bind(m_directoryIdQuery, {path});
        if (!m_directoryIdQuery.exec()) {
            warn(m_directoryIdQuery, DirectoryScanFunction, "Failed to execute m_directoryIdQuery");
            return false;
        }
        if (m_directoryIdQuery.next()) {
            known->append(m_directoryIdQuery.value(DirectoryId).toLongLong());
        } else {
            unknown.append(path);
        }
        m_directoryIdQuery.finish();
    }
    *newPackages = unknown;
    return true;
}
