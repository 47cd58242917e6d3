// SPDX-License-Identifier: BSD-3-Clause
#include "recordvalues.h"

#include <QColor>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <moodsetdata.h>
#include <photodata.h>

#include <sys/stat.h>

namespace {

const MoodsetData* moodsetOf(const ContentRow& row)
{
    return row.content.type() == MoodsetContent::Moodset
        ? static_cast<const MoodsetData*>(row.content.data())
        : nullptr;
}

/// The value that is undefined in QML.
QVariant definedValue(const QVariant& value)
{
    const bool isUnset = (value.userType() == QMetaType::QColor && !value.value<QColor>().isValid())
        || (value.userType() == QMetaType::QDateTime && !value.toDateTime().isValid());
    return isUnset ? QVariant() : value;
}

QString nameOf(const ContentRow& row)
{
    const MoodsetData* const moodset = moodsetOf(row);
    const QString name =
        row.content.data()
            ->data(moodset ? int(MoodsetData::DisplayNameRole) : int(FileData::DisplayNameRole))
            .toString();
    return name.isEmpty() ? QFileInfo(row.content.data()->url.toLocalFile()).completeBaseName()
                          : name;
}

QUrl thumbnailOf(const ContentRow& row)
{
    if (const MoodsetData* const moodset = moodsetOf(row)) {
        return moodset->homeWallpaper.isEmpty()
            ? QUrl()
            : RecordValues::thumbnailUrl(QUrl::fromLocalFile(moodset->homeWallpaper), row.version);
    }
    const auto* const file = static_cast<const FileData*>(row.content.data());
    return RecordValues::thumbnailUrl(file->url, file->modified);
}

QString monthOf(const ContentRow& row)
{
    if (row.content.type() != MoodsetContent::Image) {
        return {};
    }
    const QDate date = static_cast<const PhotoData*>(row.content.data())->dateTaken.date();
    return date.isValid() ? date.toString(QStringLiteral("yyyy-MM")) : QString();
}

} // namespace

QHash<int, QByteArray> RecordValues::moodsetRoleNames()
{
    QHash<int, QByteArray> names = FileData::modelRoleNames(MoodsetData::roleNames());
    names.insert(NameRole, "name");
    names.insert(ThumbnailRole, "thumbnail");
    names.insert(VersionedWallpaperRole, "homeWallpaper");
    names.insert(VersionedApplicationWallpaperRole, "applicationWallpaper");
    return names;
}

QHash<int, QByteArray> RecordValues::photoRoleNames()
{
    QHash<int, QByteArray> names = FileData::modelRoleNames(PhotoData::roleNames());
    names.insert(ThumbnailRole, "thumbnail");
    names.insert(MonthRole, "month");
    names.insert(FolderRole, "folder");
    return names;
}

QHash<int, QByteArray> RecordValues::fileRoleNames()
{
    QHash<int, QByteArray> names = FileData::modelRoleNames(FileData::roleNames());
    names.insert(ThumbnailRole, "thumbnail");
    names.insert(FolderRole, "folder");
    return names;
}

QHash<int, QByteArray> RecordValues::roleNames(int type)
{
    switch (type) {
    case MoodsetContent::Moodset:
        return moodsetRoleNames();
    case MoodsetContent::Image:
        return photoRoleNames();
    default:
        return fileRoleNames();
    }
}

QVariant RecordValues::value(const ContentRow& row, int role)
{
    switch (role) {
    case NameRole:
        return nameOf(row);
    case ThumbnailRole:
        return thumbnailOf(row);
    case MonthRole:
        return monthOf(row);
    case FolderRole:
        return QFileInfo(row.content.data()->url.toLocalFile()).path();
    case VersionedWallpaperRole:
        return versionedUrl(moodsetOf(row)->homeWallpaper, row.version);
    case VersionedApplicationWallpaperRole:
        return versionedUrl(moodsetOf(row)->applicationWallpaper, row.version);
    default:
        return definedValue(row.content.data()->data(role));
    }
}

QVariant RecordValues::map(const ContentRow& row)
{
    if (!row.content.isValid()) {
        return QVariant::fromValue(nullptr);
    }
    QVariantMap values;
    const QHash<int, QByteArray> names = roleNames(row.content.type());
    for (auto name = names.cbegin(); name != names.cend(); ++name) {
        values.insert(QString::fromLatin1(name.value()), value(row, name.key()));
    }
    return values;
}

qint64 RecordValues::stateOf(const QString& path)
{
    struct stat state
    {
    };
    if (path.isEmpty() || stat(QFile::encodeName(path).constData(), &state) != 0) {
        return 0;
    }
    // If a file replaces another one within a tick of the clock, it has another inode number.
    constexpr qint64 nanoseconds = 1000000000;
    return (state.st_mtim.tv_sec * nanoseconds + state.st_mtim.tv_nsec) ^ qint64(state.st_ino);
}

ContentRow RecordValues::row(const Content& content)
{
    ContentRow row{content, 0};
    if (const MoodsetData* const moodset = moodsetOf(row)) {
        // The daemon always writes both wallpapers together.
        row.version =
            stateOf(moodset->homeWallpaper) ^ (3 * (stateOf(moodset->applicationWallpaper) >> 2U));
    }
    return row;
}

QUrl RecordValues::versionedUrl(const QString& path, qint64 state)
{
    if (path.isEmpty()) {
        return {};
    }
    QUrl url = QUrl::fromLocalFile(path);
    url.setQuery(QStringLiteral("v=%1").arg(quint64(state), 0, 16));
    return url;
}

QUrl RecordValues::thumbnailUrl(const QUrl& file, qint64 state)
{
    return QUrl(QStringLiteral("image://moodset-thumbnail/%1?v=%2")
                    .arg(QString::fromLatin1(file.toEncoded()))
                    .arg(quint64(state), 0, 16));
}
