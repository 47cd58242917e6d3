// SPDX-License-Identifier: BSD-3-Clause
#include "photowatch.h"

#include "moodsetservice.h"

#include <libraryreader.h>

#include <QHash>

namespace {

// A picture that has not been read yet counts as what it was before. It shows up, or changes, when
// its data have been read.
QVector<LibraryFile> settledPhotos(
    const QVector<LibraryFile>& before, const QVector<LibraryFile>& now)
{
    QHash<QString, LibraryFile> known;
    for (const LibraryFile& photo : before) {
        known.insert(photo.path, photo);
    }

    QVector<LibraryFile> settled;
    for (const LibraryFile& photo : now) {
        if (photo.current) {
            settled.append(photo);
        } else if (known.contains(photo.path)) {
            settled.append(known.value(photo.path));
        }
    }
    return settled;
}

} // namespace

PhotoWatch::PhotoWatch(const MoodsetService& service, const LibraryReader& library, QObject* parent)
    : QObject(parent)
    , m_library(library)
    , m_photos(library.photos())
{
    connect(&service, &MoodsetService::contentChanged, this, [this](int) { look(); });
}

QVector<LibraryFile> PhotoWatch::photos() const
{
    return m_photos;
}

void PhotoWatch::look()
{
    const QVector<LibraryFile> now = settledPhotos(m_photos, m_library.photos());
    const QVector<PhotoChange> changes = photoChanges(m_photos, now);
    m_photos = now;
    if (!changes.isEmpty()) {
        Q_EMIT changed(changes);
    }
}
