// SPDX-License-Identifier: BSD-3-Clause
// The scan of an install directory, which finds the packages in it.
#include "installmanager.h"

#include "content/sqlbatch.h"
#include "indexing/filemanager.h"
#include "indexing/sortedmerge.h"

#include <QDirIterator>
#include <QVariant>

namespace {

const char* const Function = "bool InstallManager::scanInstallDirectory()";

/// A package in a listing, sorted by name.
struct Package
{
    QByteArray name;
    QString path;
};

/// The name of what lies in a directory, from the path of either.
QByteArray nameBelow(const QString& directory, const QString& path)
{
    return path.mid(directory.size() + 1).toUtf8();
}

/// The sub-directories of an install directory, also those behind symbolic links.
QVector<Package> listPackages(const QString& path)
{
    QVector<Package> packages;
    QDirIterator iterator(path, QDir::Dirs | QDir::NoDot | QDir::NoDotDot);
    while (iterator.hasNext()) {
        const QString package = iterator.next();
        packages.append({nameBelow(path, package), package});
    }
    sortByName(&packages);
    return packages;
}

} // namespace

/// Handles the first install directory of the queue; true if it went well or more are waiting.
bool InstallManager::scanInstallDirectory()
{
    if (m_installDirectories.isEmpty()) {
        return false;
    }
    const QString path = m_installDirectories.takeFirst();
    qint64 id = 0;
    FileManager::DirectoryScope scope = FileManager::KnownEntries;
    // Only the id counts: a directory that is watched already is listed again.
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

/// Queues all packages of a directory, and tells which are new and whose rows have to go.
bool InstallManager::mergePackages(
    const QString& path, qint64 directoryId, QStringList* newPackages, SqlBatch* deletes)
{
    const QVector<Package> packages = listPackages(path);
    QSqlQuery rows(m_database);
    if (!rows.prepare(QStringLiteral(
            "SELECT id, path FROM directory WHERE parentId = ? ORDER BY path ASC;"))) {
        warn(rows, Function, "Failed to prepare installs query");
        return false;
    }
    bind(rows, {directoryId});
    if (!rows.exec()) {
        warn(rows, Function, "Failed to prepare execute query");
        return false;
    }
    const auto rowPath = [&] { return rows.value(1).toString(); };
    const auto added = [&](const Package& package) {
        newPackages->append(package.path);
        m_packageDirectories.append(package.path);
    };
    const auto matched = [&](const Package&) { m_packageDirectories.append(rowPath()); };
    const auto removed = [&] { deletes->append({rows.value(0)}); };
    mergeSorted(
        packages, [&] { return rows.next(); }, [&] { return nameBelow(path, rowPath()); }, added,
        matched, removed);
    rows.finish();
    return true;
}

/// Writes what the scan has found, in one transaction.
bool InstallManager::applyInstallScan(
    qint64 directoryId, QStringList newPackages, const SqlBatch& deletes)
{
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    QVector<qint64> known;
    if (!runBatch(deletes, m_directoryDelete, Function, "Failed to execute m_directoryDelete.")
        || !separateKnownPackages(&newPackages, &known)) {
        return false;
    }
    const int scope = FileManager::RemovalsOnly;
    for (const QString& path : qAsConst(newPackages)) {
        bind(m_directoryInsert, {directoryId, path, scope});
        if (!runInTransaction(
                m_directoryInsert, Function, "Failed to execute m_directoryInsert.")) {
            return false;
        }
    }
    // A package that was registered by itself gets the install directory as its parent.
    for (const qint64 id : qAsConst(known)) {
        bind(m_directoryUpdate, {directoryId, scope, id});
        if (!runInTransaction(
                m_directoryUpdate, Function, "Failed to execute m_directoryUpdate.")) {
            return false;
        }
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}

/// Takes the packages that have a row already out of the new ones. A failure leaves the transaction
/// open; the next commit closes it.
bool InstallManager::separateKnownPackages(QStringList* newPackages, QVector<qint64>* known)
{
    QStringList unknown;
    for (const QString& path : qAsConst(*newPackages)) {
        bind(m_directoryIdQuery, {path});
        if (!m_directoryIdQuery.exec()) {
            warn(m_directoryIdQuery, Function, "Failed to execute m_directoryIdQuery");
            return false;
        }
        if (m_directoryIdQuery.next()) {
            known->append(m_directoryIdQuery.value(0).toLongLong());
        } else {
            unknown.append(path);
        }
        m_directoryIdQuery.finish();
    }
    *newPackages = unknown;
    return true;
}
