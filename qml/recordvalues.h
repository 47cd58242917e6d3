// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"

#include <QHash>
#include <QUrl>
#include <QVariantMap>

/// What QML sees of records: the values of their roles, and of some more that the module has of its
/// own. A colour or a time that a record does not have is undefined: as it is, QML would show the
/// one as black and the other as "Invalid Date".
namespace RecordValues {

enum OwnRole : int {
    NameRole = 0x2000, ///< what a moodset is called: its name, or else that of its file
    ThumbnailRole, ///< the URL of a small picture, which has another form when the picture has
                   ///< changed
    MonthRole, ///< "2024-03", when a picture was taken; empty where it does not say
    FolderRole, ///< the path of the directory
    VersionedWallpaperRole, ///< the URL of the home wallpaper, of another form when it has changed
    VersionedApplicationWallpaperRole ///< likewise of the application wallpaper
};

QHash<int, QByteArray> moodsetRoleNames();
QHash<int, QByteArray> photoRoleNames();
QHash<int, QByteArray> fileRoleNames();
QHash<int, QByteArray> roleNames(int type);

/// The value of a role.
QVariant value(const ContentRow& row, int role);

/// All values by the names of their roles; null for a null handle.
QVariant map(const ContentRow& row);

/// Tells one state of the file at a local path from another; 0 if there is none.
qint64 stateOf(const QString& path);

/// A row of a record, with the state of its wallpapers if it is a moodset.
ContentRow row(const Content& content);

/// The URL of a local file, of another form for each state; an empty URL for an empty path.
QUrl versionedUrl(const QString& path, qint64 state);

/// The URL of the thumbnail of a local file.
QUrl thumbnailUrl(const QUrl& file, qint64 state);

} // namespace RecordValues
