// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"
#include "libraryfile.h"
#include "moodsetdata.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

class QSqlQuery;
class QueryAgentDatabase;

/// Reads what the query agents do not: files that wait to be read, the numbers of each kind, the
/// directories, and the state of the database. It cannot write, because it has a read-only
/// connection of its own. If the database was rebuilt, open() again reads the new one.
///
/// The daemon may write at the same time; each call sees the state between two of its transactions.
/// A call that fails returns an empty result, and error() gives the reason. Use it on the thread
/// that made it.
class MOODSET_CONTENT_EXPORT LibraryReader
{
public:
    /// The version of the schema that this library reads.
    static constexpr int SchemaVersion = 10;

    struct Counts
    {
        /// The number of files in directories that the daemon takes new files from, and of pictures
        /// elsewhere. Files that belong to moodsets do not count.
        int files = 0;
        /// The number of directories that the daemon takes new files from, and of known directories
        /// with pictures.
        int folders = 0;
        /// The number of picture files, read or not.
        int photos = 0;
        /// The number of picture files that wait to be read.
        int waitingPhotos = 0;
        int moodsets = 0;
        int favorites = 0;
        /// The number of moodset files and index files that wait to be read.
        int waitingMoodsets = 0;
    };

    /// A directory that the daemon knows.
    struct Directory
    {
        /// How closely the daemon follows a directory.
        enum Scope : int { AllEntries = 0, KnownEntries = 1, RemovalsOnly = 2 };

        qint64 id = 0;
        /// The parent's id, or 0 for a root.
        qint64 parentId = 0;
        QString path;
        /// A Scope.
        int scope = AllEntries;
    };

    /// The path of the database that this user's daemon keeps.
    static QString standardPath();

    explicit LibraryReader(const QString& path = standardPath());
    ~LibraryReader();
    Q_DISABLE_COPY_MOVE(LibraryReader)

    /// Opens the database. False if it is missing or cannot be read.
    bool open();

    /// All picture files, sorted by directory and name.
    QVector<LibraryFile> photos() const;

    /// The file with this absolute path, of any type. Empty if the daemon does not know it.
    std::optional<LibraryFile> findFile(const QString& path) const;

    Counts counts() const;

    /// All moodsets, in the order of MoodsetQueryAgent's listing, with their time stamps but
    /// without their resources. This is several times as fast as that listing.
    QVector<Moodset> moodsets() const;

    /// A moodset with its resources, or a null handle if there is none.
    /// @{
    Moodset moodset(qint64 id) const;
    /// Finds the moodset by its local file, or by the URL that its picture was downloaded from.
    Moodset moodset(const QUrl& url) const;
    /// @}

    /// All directories, sorted by path.
    QVector<Directory> directories() const;

    /// The URLs that downloaded files came from; the keys are the files' paths.
    QHash<QString, QString> downloads() const;

    /// A number that changes when the daemon has written to the database.
    int dataVersion() const;

    /// The version of the database's schema, or 0 if it has none.
    int schemaVersion() const;

    /// The faults that SQLite finds in the database's pages, in its own words. Empty if there are
    /// none. This reads the whole file.
    QStringList damages() const;

    /// Why the last call failed, in one line. Empty if it succeeded.
    QString error() const;

private:
    bool run(QSqlQuery* query) const;
    int number(const QString& statement) const;

    QString m_path;
    std::unique_ptr<QueryAgentDatabase> m_database;
    mutable QString m_error;
};
