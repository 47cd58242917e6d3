// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

/// A file in a listed directory.
struct FileEntry
{
    /// The file name in UTF-8, by which listings are sorted.
    QByteArray name;
    QString path;
    QString fileName;
    /// The time of last modification, of its target for a symbolic link.
    QDateTime modified;
    /// Whether it, or the target of a symbolic link, is a regular file.
    bool isRegular = false;
};

/// A sub-directory of a listed directory.
struct DirectoryEntry
{
    /// The directory's name in UTF-8, by which listings are sorted.
    QByteArray name;
    QString path;
};

/// What a directory holds, without hidden entries and without symbolic links to directories, so
/// that following the listings never leaves the tree. Both lists are in the order in which the
/// database sorts names, by their bytes.
struct DirectoryListing
{
    QVector<FileEntry> files;
    QVector<DirectoryEntry> directories;
};

/// Lists the directory at a local path, but not what lies below it; nothing for a path that cannot
/// be read.
DirectoryListing listDirectory(const QString& path);
