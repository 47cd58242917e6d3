// SPDX-License-Identifier: BSD-3-Clause
#include "thumbnailcache.h"

#include <picturereader.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <array>

#include <sys/stat.h>

namespace {

struct Class
{
    const char* folder;
    int side;
};

constexpr std::array<Class, 4> Classes{
    {{"normal", 128}, {"large", 256}, {"x-large", 512}, {"xx-large", 1024}}};

const QString UriKey = QStringLiteral("Thumb::URI");
const QString TimeKey = QStringLiteral("Thumb::MTime");

/// If a file changes again within this time, it can still have the same modification time.
constexpr qint64 ShortestAgeSecs = 2;

/// This makes small files quickly: a higher compression takes longer than decoding the picture.
constexpr int PngQuality = 80;

QString root()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
        + QStringLiteral("/thumbnails/");
}

QString uriOf(const QString& path)
{
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded));
}

QString fileFor(const QString& uri, const Class& size)
{
    return root() + QLatin1String(size.folder) + QLatin1Char('/')
        + QString::fromLatin1(
               QCryptographicHash::hash(uri.toUtf8(), QCryptographicHash::Md5).toHex())
        + QStringLiteral(".png");
}

QString textOf(const QDateTime& modified)
{
    return QString::number(modified.toSecsSinceEpoch());
}

/// Makes the directory for thumbnails of one size, which only the user may read. False if there is
/// none.
bool makeFolder(const QString& folder)
{
    if (QFileInfo(folder).isDir()) {
        return true;
    }
    const QDir above(QFileInfo(folder).path());
    if (!above.exists() && !QDir().mkpath(above.path())) {
        return false;
    }
    constexpr mode_t ownersOnly = 0700;
    // Another program may have made it in the meantime.
    static_cast<void>(mkdir(QFile::encodeName(folder).constData(), ownersOnly));
    return QFileInfo(folder).isDir();
}

} // namespace

int ThumbnailCache::sideFor(int side)
{
    for (const Class& size : Classes) {
        if (side <= size.side) {
            return size.side;
        }
    }
    return 0;
}

QImage ThumbnailCache::find(const QString& path, const QDateTime& modified, int side)
{
    const QString uri = uriOf(path);
    for (const Class& size : Classes) {
        if (size.side < side) {
            continue;
        }
        PictureReader reader(fileFor(uri, size));
        const QSize pixels = reader.size();
        // Any program that writes to the cache could put a huge file there.
        if (reader.format() != PictureFormat::Png || !pixels.isValid()
            || std::max(pixels.width(), pixels.height()) > size.side) {
            continue;
        }
        QImage thumbnail = reader.read();
        if (thumbnail.text(UriKey) == uri && thumbnail.text(TimeKey) == textOf(modified)) {
            return thumbnail;
        }
    }
    return {};
}

void ThumbnailCache::store(
    const QString& path, const QDateTime& modified, int side, QImage thumbnail)
{
    const auto* const size = std::find_if(
        Classes.begin(), Classes.end(), [side](const Class& one) { return one.side == side; });
    const bool isFresh = modified.secsTo(QDateTime::currentDateTime()) < ShortestAgeSecs;
    if (size == Classes.end() || isFresh || path.startsWith(root())) {
        return;
    }
    const QString uri = uriOf(path);
    const QString target = fileFor(uri, *size);
    if (!makeFolder(QFileInfo(target).path())) {
        return;
    }
    thumbnail.setText(UriKey, uri);
    thumbnail.setText(TimeKey, textOf(modified));
    thumbnail.setText(QStringLiteral("Software"), QStringLiteral("moodsetd"));
    QSaveFile file(target);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    QImageWriter writer(&file, "png");
    writer.setQuality(PngQuality);
    // commit() alone does not notice that the last bytes could not be written.
    if (writer.write(thumbnail) && file.flush()) {
        // A thumbnail that could not be stored is made again the next time.
        static_cast<void>(file.commit());
    }
}
