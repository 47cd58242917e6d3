// SPDX-License-Identifier: BSD-3-Clause
#include "photochange.h"

#include <QHash>

QVector<PhotoChange> photoChanges(
    const QVector<LibraryFile>& before, const QVector<LibraryFile>& after)
{
    QHash<QString, LibraryFile> previous;
    for (const LibraryFile& photo : before) {
        previous.insert(photo.path, photo);
    }

    QVector<PhotoChange> arrivals;
    for (const LibraryFile& photo : after) {
        const auto match = previous.constFind(photo.path);
        if (match == previous.constEnd()) {
            arrivals.append({PhotoChange::Kind::Added, photo});
        } else if (*match != photo) {
            arrivals.append({PhotoChange::Kind::Changed, photo});
        }
        previous.remove(photo.path);
    }

    QVector<PhotoChange> changes;
    for (const LibraryFile& photo : before) {
        if (previous.contains(photo.path)) {
            changes.append({PhotoChange::Kind::Removed, photo});
        }
    }
    return changes + arrivals;
}
