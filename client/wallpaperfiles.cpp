// SPDX-License-Identifier: BSD-3-Clause
#include "wallpaperfiles.h"

#include "moodsetlibrary.h"
#include "theme.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

namespace {

constexpr int RestingSeconds = 60;

QSet<QString> referred(QString* fault)
{
    MoodsetLibrary library;
    QSet<QString> paths;
    for (const Moodset& moodset : library.moodsets()) {
        paths.insert(moodset->homeWallpaper);
        paths.insert(moodset->applicationWallpaper);
    }
    *fault = library.error();
    const Theme theme = Theme::read();
    paths.insert(theme.homeWallpaper);
    paths.insert(theme.applicationWallpaper);
    return paths;
}

} // namespace

QString WallpaperFiles::folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
        + QStringLiteral("/moodsetd/com/zavro/components/bgimages");
}

WallpaperFiles WallpaperFiles::read()
{
    WallpaperFiles files;
    const QSet<QString> inUse = referred(&files.fault);
    if (!files.fault.isEmpty()) {
        return files;
    }
    const QDateTime latest = QDateTime::currentDateTime().addSecs(-RestingSeconds);
    QDirIterator entries(
        folder(), {QStringLiteral("*.jpg")}, QDir::Files | QDir::NoSymLinks,
        QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QFileInfo info = entries.fileInfo();
        if (inUse.contains(path) || info.lastModified() > latest) {
            ++files.used;
        } else {
            files.unused.append(path);
            files.unusedSize += info.size();
        }
    }
    files.unused.sort();
    return files;
}
