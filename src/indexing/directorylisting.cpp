// SPDX-License-Identifier: BSD-3-Clause
#include "directorylisting.h"

#include "sortedmerge.h"

#include <QDirIterator>
#include <QFileInfo>

DirectoryListing listDirectory(const QString& path)
{
    DirectoryListing listing;
    QDirIterator iterator(path, QDir::Dirs | QDir::Files | QDir::NoDot | QDir::NoDotDot);
    while (iterator.hasNext()) {
        const QString entryPath = iterator.next();
        const QFileInfo info = iterator.fileInfo();
        const QString fileName = info.fileName();
        if (!info.isDir()) {
            listing.files.append(
                {fileName.toUtf8(), entryPath, fileName, info.lastModified(), info.isFile()});
        } else if (!info.isSymLink()) {
            listing.directories.append({fileName.toUtf8(), entryPath});
        }
    }
    sortByName(&listing.files);
    sortByName(&listing.directories);
    return listing;
}
