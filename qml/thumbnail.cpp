// SPDX-License-Identifier: BSD-3-Clause
#include "thumbnail.h"

#include "thumbnailcache.h"

#include <exifdirectory.h>
#include <picturereader.h>
#include <tagblocks.h>
#include <windowedfile.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

/// The side of a thumbnail if no size is requested.
constexpr int StandardSide = 256;

/// If a panorama has to cover a square, its longer side is at most this many times as long as the
/// side of the square.
constexpr int LongestAspect = 4;

/// The camera's thumbnail is used if it has at least this part of the requested size. A smaller one
/// would look blurred.
constexpr double SmallestShare = 0.8;

/// The largest difference between the proportions of the camera's thumbnail and of the picture, as
/// a part of the latter. One in six cameras adds black bars.
constexpr double LargestDeviation = 0.03;

/// The largest pictures that are decoded. A JPEG file is scaled while it is decoded. All others are
/// first in memory as a whole, with four bytes for each pixel.
constexpr qint64 MostJpegPixels = 256'000'000;
constexpr qint64 MostOtherPixels = 64'000'000;

bool isTooLarge(const QSize& size, PictureFormat format)
{
    return qint64(size.width()) * size.height()
        > (format == PictureFormat::Jpeg ? MostJpegPixels : MostOtherPixels);
}

/// The tags of a picture: its orientation, and the thumbnail that the camera has stored.
struct Tags
{
    int orientation = 0;
    QByteArray thumbnail;

    bool isTurned() const { return orientation >= 5 && orientation <= 8; }
};

Tags readTags(const QString& path, PictureFormat format)
{
    Tags tags;
    if (format == PictureFormat::Heif || format == PictureFormat::Avif) {
        return tags; // Their decoders turn them upright.
    }
    WindowedFile file(path);
    const TagBlocks blocks = findTagBlocks(file);
    tags.orientation = int(readExifTags(file, blocks.exif).orientation);
    tags.thumbnail = readExifThumbnail(file, blocks.exif);
    return tags;
}

/// Turns the stored pixels as the Exif orientation says.
QImage upright(const QImage& stored, int orientation)
{
    const auto rotated = [](const QImage& image, int angle) {
        return image.transformed(QTransform().rotate(angle), Qt::FastTransformation);
    };
    switch (orientation) {
    case 2:
        return stored.mirrored(true, false);
    case 3:
        return stored.mirrored(true, true);
    case 4:
        return stored.mirrored(false, true);
    case 5:
        return rotated(stored.mirrored(true, false), 270);
    case 6:
        return rotated(stored, 90);
    case 7:
        return rotated(stored.mirrored(true, false), 90);
    case 8:
        return rotated(stored, 270);
    default:
        return stored;
    }
}

/// The size of the thumbnail of an upright picture.
QSize thumbnailSize(const QSize& picture, const QSize& wanted)
{
    QSize box = wanted;
    if (box.width() <= 0 && box.height() <= 0) {
        box = QSize(StandardSide, StandardSide);
    }
    const int longest = LongestAspect * std::max(box.width(), box.height());
    const QSize covering =
        picture.scaled(box.expandedTo(QSize(1, 1)), Qt::KeepAspectRatioByExpanding);
    const QSize size = std::max(covering.width(), covering.height()) <= longest
        ? covering
        : picture.scaled(QSize(longest, longest), Qt::KeepAspectRatio);
    return size.width() < picture.width() && size.height() < picture.height()
        ? size.expandedTo(QSize(1, 1))
        : picture;
}

int longerSide(const QSize& size)
{
    return std::max(size.width(), size.height());
}

QImage scaledDown(const QImage& image, const QSize& size)
{
    return image.width() > size.width() || image.height() > size.height()
        ? image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        : image;
}

/// The camera's thumbnail, if it is good enough for `size` pixels; null otherwise.
QImage cameraThumbnail(const Tags& tags, const QSize& picture, const QSize& size)
{
    if (tags.thumbnail.isEmpty()) {
        return {};
    }
    PictureReader reader(tags.thumbnail);
    const QSize stored = reader.size();
    if (reader.format() != PictureFormat::Jpeg || !stored.isValid()
        || longerSide(stored) > StandardSide * LongestAspect) {
        return {};
    }
    const QSize seen = tags.isTurned() ? stored.transposed() : stored;
    const double ratio =
        double(seen.width()) * picture.height() / (double(seen.height()) * picture.width());
    if (seen.width() < SmallestShare * size.width() || seen.height() < SmallestShare * size.height()
        || std::abs(ratio - 1) > LargestDeviation) {
        return {};
    }
    return upright(reader.read(), tags.orientation);
}

QImage decoded(PictureReader* reader, const QSize& stored, const QSize& size, const Tags& tags)
{
    const QImage image =
        reader->read(QRect(QPoint(), stored), tags.isTurned() ? size.transposed() : size);
    return upright(image, tags.orientation);
}

} // namespace

QImage thumbnail(const QString& path, const QSize& wanted)
{
    PictureReader reader(path);
    const QSize stored = reader.size();
    if (!stored.isValid() || isTooLarge(stored, reader.format())) {
        return {};
    }
    const QDateTime modified = QFileInfo(path).lastModified();
    const Tags tags = readTags(path, reader.format());
    const QSize picture = tags.isTurned() ? stored.transposed() : stored;
    const QSize size = thumbnailSize(picture, wanted);
    const int side = ThumbnailCache::sideFor(longerSide(size));
    QImage image = ThumbnailCache::find(path, modified, longerSide(size));
    if (image.isNull()) {
        image = cameraThumbnail(tags, picture, size);
    }
    if (!image.isNull()) {
        return scaledDown(image, size);
    }
    if (side == 0 || longerSide(picture) <= side) {
        return decoded(&reader, stored, size, tags);
    }
    const QSize cached = picture.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    image = decoded(&reader, stored, cached, tags);
    if (!image.isNull()) {
        ThumbnailCache::store(path, modified, side, image);
    }
    return scaledDown(image, size);
}
