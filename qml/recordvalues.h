// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"

#include <QHash>
#include <QUrl>
#include <QVariantMap>

/// The values of records for QML: those of their roles, and of some roles that only the module has.
/// If a record does not have a colour or a time, the value is undefined, because QML would show an
/// invalid colour as black and an invalid time as "Invalid Date".
namespace RecordValues {

enum OwnRole : int {
    NameRole = 0x2000, ///< the name of a moodset, or the name of its file if it has none
    ThumbnailRole, ///< the URL of a small picture, which changes when the picture changes
    MonthRole, ///< "2024-03", when a picture was taken; empty without a time
    FolderRole, ///< the path of the directory
    VersionedWallpaperRole, ///< the URL of the home wallpaper, which changes with the file
    VersionedApplicationWallpaperRole ///< the same for the application wallpaper
};

QHash<int, QByteArray> moodsetRoleNames();
QHash<int, QByteArray> photoRoleNames();
QHash<int, QByteArray> fileRoleNames();
QHash<int, QByteArray> roleNames(int type);

/// The value of a role.
QVariant value(const ContentRow& row, int role);

/// All values, by the names of their roles; null for a null handle.
QVariant map(const ContentRow& row);

/// A number that changes when the file at a local path changes; 0 if there is no file.
qint64 stateOf(const QString& path);

/// Makes the row of a record. For a moodset, it includes the states of the wallpapers.
ContentRow row(const Content& content);

/// The URL of a local file, which contains its state as a query. Empty for an empty path.
QUrl versionedUrl(const QString& path, qint64 state);

/// The URL of the thumbnail of a local file.
QUrl thumbnailUrl(const QUrl& file, qint64 state);

} // namespace RecordValues
