// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photo.h"

#include <QSqlDatabase>
#include <QVector>

#include <optional>

/// Reads the daemon's database, and never writes it. The daemon may write meanwhile; each call sees
/// the state after some whole step of it.
///
/// A call that fails gives an empty result and leaves its reason in error().
class Library
{
public:
    struct Counts
    {
        /// Files in folders whose new files the daemon takes in, and pictures elsewhere. What
        /// belongs to moodsets is not among them.
        int files = 0;
        /// Folders whose new files the daemon takes in, and folders of pictures that it knows.
        int folders = 0;
        /// Picture files, whether or not their data have been read.
        int photos = 0;
        /// Picture files that wait for their data to be read.
        int waitingPhotos = 0;
    };

    /// Where the daemon of this user keeps its database.
    static QString standardPath();

    explicit Library(const QString& path = standardPath());
    ~Library();
    Q_DISABLE_COPY_MOVE(Library)

    /// Opens the database; false if it is missing or cannot be read.
    bool open();

    /// All picture files, sorted by folder and name.
    QVector<Photo> photos() const;

    /// The file at the absolute path, of whatever type; nothing if the daemon does not know it.
    std::optional<Photo> findFile(const QString& path) const;

    Counts counts() const;

    /// A number that changes when the daemon has written something.
    int dataVersion() const;

    /// Why the last call failed, in one line; empty if it did not.
    QString error() const;

private:
    QString m_path;
    QSqlDatabase m_database;
    mutable QString m_error;
};
