// SPDX-License-Identifier: BSD-3-Clause
#include "backgroundpicture.h"

#include "decodableimage.h"

#include <quillmetadata.h>

#include <QFileInfo>
#include <QImageReader>
#include <QRect>
#include <QTransform>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace {

/// How the stored pixels are to be turned to stand upright: mirrored first, then rotated clockwise.
struct Orientation
{
    int angle = 0; // degrees
    bool isMirrored = false;

    bool isOnItsSide() const { return angle % 180 != 0; }
};

/// A part of the stored pixels and the size to scale it to.
struct Cut
{
    QRect clip;
    QSize scaledSize;
};

Orientation imageOrientation(const QString& path)
{
    // By the tag's value, less 1. Exif means the values 5 and 7, which no camera writes, the other
    // way up: mirrored first, theirs would be 270 and 90 degrees.
    constexpr std::array<Orientation, 8> orientations{
        {{0, false},
         {0, true},
         {180, false},
         {180, true},
         {90, true},
         {90, false},
         {270, true},
         {270, false}}};
    const QuillMetadata metadata(path, QuillMetadata::AllFormats);
    const int value = metadata.entry(QuillMetadata::OrientationTag).toInt();
    if (value < 1 || value > static_cast<int>(orientations.size())) {
        return {};
    }
    return orientations.at(static_cast<size_t>(value - 1));
}

QSize uprightSize(const QImageReader& reader, const Orientation& orientation)
{
    const QSize size = reader.size();
    return orientation.isOnItsSide() ? size.transposed() : size;
}

/// The largest centred square of a picture that is `source` pixels large when upright.
Cut squareCut(const QSize& source, const Orientation& orientation, const QSize& size)
{
    const int edge = std::min(source.width(), source.height());
    int left = 0;
    int top = 0;
    if (source.width() > source.height()) {
        left = (source.width() - source.height()) / 2;
    } else {
        top = (source.height() - source.width()) / 2;
    }
    if (orientation.isOnItsSide()) {
        std::swap(left, top);
    }
    const int side = std::max(size.width(), size.height());
    return {QRect(left, top, edge, edge), QSize(side, side)};
}

/// The part of a picture in the older layout that a screen of `size` pixels shows. The products are
/// those of single precision: with more of it some cuts come out a pixel larger.
Cut legacyCut(const QSize& source, const Orientation& orientation, const QSize& size)
{
    const int third = size.height() / 3;
    const int legacyHeight = third + third + size.height();
    const auto ratio = [](int dividend, int divisor) {
        return static_cast<float>(dividend) / static_cast<float>(divisor);
    };
    const float imageRatio = ratio(source.width(), source.height());
    const float legacyRatio = ratio(size.width(), legacyHeight);
    const float screenRatio = ratio(size.height(), size.width());
    const auto product = [](int length, float factor) {
        return static_cast<int>(static_cast<float>(length) * factor);
    };

    int x = 0;
    int clipWidth = source.width();
    if (imageRatio > legacyRatio) {
        clipWidth = product(source.height(), legacyRatio);
        x = source.width() / 2 - clipWidth / 2;
    }
    const int clipHeight = product(clipWidth, screenRatio);
    int y = static_cast<int>(clipHeight / 960.0 * 58.0);
    QSize clipSize(clipWidth, clipHeight);
    QSize scaledSize = size;
    if (orientation.isOnItsSide()) {
        clipSize.transpose();
        scaledSize.transpose();
        std::swap(x, y);
    }
    return {QRect(QPoint(x, y), clipSize), scaledSize};
}

QImage upright(const QImage& stored, const Orientation& orientation)
{
    QImage image = orientation.isMirrored ? stored.mirrored(true, false) : stored;
    if (orientation.angle != 0) {
        image = image.transformed(
            QTransform().rotate(orientation.angle, Qt::ZAxis), Qt::FastTransformation);
    }
    return image;
}

/// What `decode` makes of a reader on the file at `path`; null if there is no such file, or no
/// memory for it.
template <typename Decode>
QImage load(const QString& path, Decode decode)
{
    // The reader would wait for ever on a FIFO, and would look for a missing file's namesakes with
    // the suffixes of pictures.
    if (!QFileInfo(path).isFile()) {
        return QImage();
    }
    try {
        QImageReader reader(path);
        return isDecodable(reader) ? decode(&reader) : QImage();
    } catch (const std::bad_alloc&) {
        // Some of the reader's plugins hold a whole file in memory.
        return QImage();
    }
}

/// Reads the part of a picture that `cutFor` chooses.
template <typename CutFor>
QImage loadCut(const QString& path, const QSize& size, CutFor cutFor)
{
    return load(path, [&](QImageReader* reader) {
        const Orientation orientation = imageOrientation(path);
        const Cut cut = cutFor(uprightSize(*reader, orientation), orientation, size);
        reader->setClipRect(cut.clip);
        reader->setScaledSize(cut.scaledSize);
        return upright(reader->read(), orientation);
    });
}

} // namespace

QImage loadBackgroundImage(const QString& path, const QSize& size)
{
    return loadCut(path, size, squareCut);
}

QImage loadLegacyBackgroundImage(const QString& path, const QSize& size)
{
    return loadCut(path, size, legacyCut);
}

QImage loadWholeImage(const QString& path)
{
    return load(path, [](QImageReader* reader) { return reader->read(); });
}
