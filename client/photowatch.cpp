// SPDX-License-Identifier: BSD-3-Clause
#include "photowatch.h"

#include "library.h"
#include "moodsetservice.h"
#include "photochange.h"
#include "phototable.h"
#include "texttable.h"

#include <QHash>

namespace {

QString kindName(PhotoChange::Kind kind)
{
    switch (kind) {
    case PhotoChange::Kind::Added:
        return QStringLiteral("added  ");
    case PhotoChange::Kind::Changed:
        return QStringLiteral("changed");
    case PhotoChange::Kind::Removed:
        return QStringLiteral("removed");
    }
    return {};
}

QString changeLine(const PhotoChange& change, const QString& folder)
{
    QString start =
        kindName(change.kind) + QLatin1Char(' ') + displayPath(change.photo.path, folder);
    if (change.kind == PhotoChange::Kind::Removed) {
        return start;
    }
    return QStringLiteral("%1  %2  %3  %4  %5")
        .arg(
            start, displaySize(change.photo), displayTaken(change.photo),
            displayOrientation(change.photo), change.photo.mimeType);
}

// A picture whose data are still to be read shows up, or changes, when they have been. Until then
// it counts as what it was before.
QVector<Photo> settledPhotos(const QVector<Photo>& before, const QVector<Photo>& now)
{
    QHash<QString, Photo> known;
    for (const Photo& photo : before) {
        known.insert(photo.path, photo);
    }

    QVector<Photo> settled;
    for (const Photo& photo : now) {
        if (photo.current) {
            settled.append(photo);
        } else if (known.contains(photo.path)) {
            settled.append(known.value(photo.path));
        }
    }
    return settled;
}

} // namespace

PhotoWatch::PhotoWatch(
    const MoodsetService& service, const Library& library, const QString& folder,
    QTextStream& output, QObject* parent)
    : QObject(parent)
    , m_library(library)
    , m_folder(folder)
    , m_output(output)
    , m_photos(library.photos())
{
    connect(&service, &MoodsetService::contentChanged, this, [this](int) { printChanges(); });
}

QVector<Photo> PhotoWatch::photos() const
{
    return m_photos;
}

void PhotoWatch::printChanges()
{
    const QVector<Photo> now = settledPhotos(m_photos, m_library.photos());
    for (const PhotoChange& change : photoChanges(m_photos, now)) {
        m_output << changeLine(change, m_folder) << '\n';
    }
    m_output.flush();
    m_photos = now;
}
