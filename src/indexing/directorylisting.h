// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>

/// A file in a listed directory.
struct FileEntry
{
    /// The file name in UTF-8. Listings are sorted by it.
    QByteArray name;
    QString path;
    QString fileName;
    /// The time of the last change; for a symbolic link, that of its target.
    QDateTime modified;
    /// Whether this is a regular file or a symbolic link to one.
    bool isRegular = false;
};

/// A sub-directory of a listed directory.
struct DirectoryEntry
{
    /// The directory's name in UTF-8. Listings are sorted by it.
    QByteArray name;
    QString path;
};

/// The entries of a directory, without hidden ones and without symbolic links to directories, so a
/// scan never leaves the tree. Both lists are sorted by the bytes of the names, as the database
/// sorts them.
struct DirectoryListing
{
    QVector<FileEntry> files;
    QVector<DirectoryEntry> directories;
};

/// An entry of a directory whose name is not text, but only bytes.
struct UndecodableEntry
{
    /// The path of the entry.
    QByteArray path;
    /// The kind of the entry, or of its target if it is a symbolic link: a regular file, a
    /// directory, or neither.
    bool isFile = false;
    bool isDirectory = false;
};

/// Calls `found` for each entry of the directory at a local path that passes the filters. The
/// iterator stands at the entry. A path that cannot be read has no entries.
///
/// Returns false if the directory could not be opened because this process or the system has no
/// file descriptor or memory left. The iterator alone makes no difference between such a directory
/// and an empty one, whose rows would have to go.
Q_REQUIRED_RESULT bool listEntries(
    const QString& path, QDir::Filters filters,
    const std::function<void(const QDirIterator& entry)>& found);

/// Reports that a directory is left as it is known, since listEntries() could not open it.
void warnOfUnlisted(const char* function, const QString& path);

/// Lists the directory at a local path, without the content of its sub-directories. Empty if the
/// path cannot be read. There is no listing where listEntries() returns false.
std::optional<DirectoryListing> listDirectory(const QString& path);

/// Lists the entries that other listings lack, because Qt leaves out names that decodeFileName()
/// cannot decode. Hidden entries are left out.
QVector<UndecodableEntry> listUndecodable(const QString& path);
