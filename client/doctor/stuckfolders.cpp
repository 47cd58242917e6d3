// SPDX-License-Identifier: BSD-3-Clause
#include "stuckfolders.h"

#include <QHash>
#include <QSet>

StuckFolders findStuckFolders(const QVector<LibraryReader::Directory>& directories)
{
    using Directory = LibraryReader::Directory;
    QHash<QString, const Directory*> byPath;
    QSet<qint64> ids;
    for (const Directory& directory : directories) {
        byPath.insert(directory.path, &directory);
        ids.insert(directory.id);
    }
    StuckFolders stuck;
    for (const Directory& directory : directories) {
        const QString parentPath =
            directory.path.left(directory.path.lastIndexOf(QLatin1Char('/')));
        const Directory* const parent = byPath.value(parentPath);
        if (parent && parent->scope == Directory::AllEntries && directory.parentId != parent->id) {
            stuck.unscanned.append({parent->path, directory.path});
        } else if (directory.parentId != 0 && !ids.contains(directory.parentId)) {
            stuck.leftOver.append(directory.path);
        }
    }
    return stuck;
}
