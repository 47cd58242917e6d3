// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "indexing/updateschedule.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSqlQuery>
#include <QStringList>
#include <QVector>

#include <optional>

class SqlBatch;

/// Keeps the rows of installed packages the same as the install directories.
///
/// An install directory contains packages. A package contains moodset files and index files, which
/// are known by the ends of their names; no other file gets a row here. The manager works in turns
/// on the event loop: an install directory, or else a package, or else one turn of the managers
/// that read those files.
class InstallManager : public QObject, public ContentManager
{
public:
    explicit InstallManager(QueryAgentDatabase& database, QObject* parent);

    /// The registry's install manager.
    static InstallManager* fromRegistry();

    /// The directories in which packages are installed.
    static QStringList installPaths();

    /// Registers an install directory and queues it for a scan. Does nothing if the path does not
    /// exist.
    void appendDirectory(const QString& path);
    /// Registers a package's directory and scans it at once; its files are read later. With
    /// `force`, files that have not changed are read again, too. If `dorselId`, the id of a back
    /// cover, is not empty, each moodset file of the package gets it. False if there is no such
    /// directory or the database failed.
    bool install(const QString& path, const QString& dorselId, bool force);
    /// Lets all files that are not up to date be read.
    void refreshInstalls();

    bool event(QEvent* event) override;
    /// One turn of the managers that still have files to read. True if there is more to do.
    bool updateMetaData() override;

private:
    struct PackageEntry;
    struct PackageChanges;

    bool prepareStatements();
    bool runStep();

    // installdirectoryscan.cpp
    bool scanInstallDirectory();
    bool mergePackages(
        const QString& path, qint64 directoryId, QStringList* newPackages, SqlBatch* deletes);
    bool applyInstallScan(qint64 directoryId, QStringList newPackages, const SqlBatch& deletes);
    bool separateKnownPackages(QStringList* newPackages, QVector<qint64>* known);

    // packagescan.cpp
    bool scanPackage(const QString& path, const QString& dorselId, bool force);
    static std::optional<QVector<PackageEntry>> listPackage(const QString& path);
    bool mergeFiles(
        const QVector<PackageEntry>& entries, qint64 directoryId, bool force,
        PackageChanges* changes);
    bool applyFiles(const PackageChanges& changes);
    bool attachDorselId(
        const QVector<PackageEntry>& entries, qint64 directoryId, const QString& dorselId);
    bool attachDorselId(qint64 directoryId, const QString& fileName, const QString& dorselId);

    QSqlQuery m_fileQuery{m_database};
    QSqlQuery m_fileInsert{m_database};
    QSqlQuery m_fileSyncUpdate{m_database};
    QSqlQuery m_fileSyncDelete{m_database};
    QSqlQuery m_directoryIdQuery{m_database};
    QSqlQuery m_directoryInsert{m_database};
    QSqlQuery m_directoryUpdate{m_database};
    QSqlQuery m_directoryDelete{m_database};
    QSqlQuery m_dorselIdQuery{m_database};
    QSqlQuery m_dorselIdInsert{m_database};
    QSqlQuery m_dorselIdUpdate{m_database};

    /// Time since construction, for the log.
    QElapsedTimer m_elapsed;
    /// Install directories that wait for a scan, in the order of arrival.
    QStringList m_installDirectories;
    /// Packages that wait for a scan, in the order of arrival.
    QStringList m_packageDirectories;
    /// Managers whose updateMetaData() must still run.
    QList<ContentManager*> m_metadataManagers;
    UpdateSchedule m_updates{this};
};
