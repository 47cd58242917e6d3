// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "indexing/updateschedule.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSqlQuery>
#include <QStringList>
#include <QVector>

class SqlBatch;

/// Keeps the rows of installed packages in step with the install directories.
///
/// An install directory holds packages; a package holds moodset files and index files, told by
/// their endings, and nothing else of it gets a row here. The manager works in steps on the event
/// loop: an install directory, or else a package, or else one turn of what parses those files.
class InstallManager : public QObject, public ContentManager
{
public:
    explicit InstallManager(QueryAgentDatabase& database, QObject* parent);

    /// The registry's one install manager.
    static InstallManager* fromRegistry();

    /// The directories in which packages are installed.
    static QStringList installPaths();

    /// Registers an install directory and queues it for a scan; nothing for a path that does not
    /// exist.
    void appendDirectory(const QString& path);
    /// Registers a package's directory and scans it at once; its files are parsed later. With
    /// `force` also those that have not changed. The id of a back cover, if given, is attached to
    /// each of the package's moodset files. False if there is no such directory or the database
    /// failed.
    bool install(const QString& path, const QString& dorselId, bool force);
    /// Has all files that are not up to date parsed.
    void refreshInstalls();

    bool event(QEvent* event) override;
    /// One turn of the parsers that are still to run; true if there is more to do.
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
    static void listPackage(
        const QString& path, QVector<PackageEntry>* entries, QStringList* moodsetFiles);
    bool mergeFiles(
        const QVector<PackageEntry>& entries, qint64 directoryId, bool force,
        PackageChanges* changes);
    bool applyFiles(const PackageChanges& changes);
    bool attachDorselId(qint64 directoryId, const QString& fileName, const QString& dorselId);

    QSqlQuery m_fileQuery;
    QSqlQuery m_fileInsert;
    QSqlQuery m_fileSyncUpdate;
    QSqlQuery m_fileSyncDelete;
    QSqlQuery m_directoryIdQuery;
    QSqlQuery m_directoryInsert;
    QSqlQuery m_directoryUpdate;
    QSqlQuery m_directoryDelete;
    QSqlQuery m_dorselIdQuery;
    QSqlQuery m_dorselIdInsert;
    QSqlQuery m_dorselIdUpdate;

    /// Time since construction, for the log.
    QElapsedTimer m_elapsed;
    /// Install directories that wait for a scan, first in, first out.
    QStringList m_installDirectories;
    /// Packages that wait for a scan, likewise.
    QStringList m_packageDirectories;
    /// Managers whose updateMetaData() is still to run.
    QList<ContentManager*> m_metadataManagers;
    UpdateSchedule m_updates;
};
