// SPDX-License-Identifier: BSD-3-Clause
#include "phototable.h"

#include "printabletext.h"
#include "texttable.h"

#include <QStringList>

#include <algorithm>

QString displaySize(const Photo& photo)
{
    if (!photo.current) {
        return QStringLiteral("waiting");
    }
    if (!photo.isReadable()) {
        return QStringLiteral("unreadable");
    }
    if (!photo.size.isValid()) {
        return QStringLiteral("unknown");
    }
    return QStringLiteral("%1x%2").arg(photo.size.width()).arg(photo.size.height());
}

QString displayTaken(const Photo& photo)
{
    return photo.taken.isValid() ? photo.taken.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))
                                 : QStringLiteral("-");
}

QString displayOrientation(const Photo& photo)
{
    return photo.orientation == 0 ? QStringLiteral("-") : QString::number(photo.orientation);
}

QString photoTable(const QVector<Photo>& photos, const QString& folder)
{
    if (photos.isEmpty()) {
        return {};
    }
    QVector<QStringList> lines{
        {QStringLiteral("File"), QStringLiteral("Size"), QStringLiteral("Taken"),
         QStringLiteral("Orientation"), QStringLiteral("Type")}};
    for (const Photo& photo : photos) {
        lines.append(
            {displayPath(photo.path, folder), displaySize(photo), displayTaken(photo),
             displayOrientation(photo), printableText(photo.mimeType)});
    }
    return textTable(lines);
}

QString summaryLine(const Library::Counts& counts, const QVector<Photo>& photos)
{
    const auto unreadable = std::count_if(photos.cbegin(), photos.cend(), [](const Photo& photo) {
        return photo.current && !photo.isReadable();
    });
    QStringList parts{
        numbered(counts.files, "file", "files"), numbered(counts.photos, "picture", "pictures"),
        numbered(counts.folders, "folder", "folders")};
    if (unreadable > 0) {
        parts.append(QStringLiteral("%1 unreadable").arg(unreadable));
    }
    return parts.join(QStringLiteral(", "));
}
