// SPDX-License-Identifier: BSD-3-Clause
#include "directorylisting.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace {

template <typename Entry>
void sortByName(QVector<Entry>* entries)
{
    std::sort(entries->begin(), entries->end(), [](const Entry& left, const Entry& right) {
        return qstrcmp(left.name, right.name) < 0;
    });
}

} // namespace

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
