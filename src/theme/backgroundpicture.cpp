// SPDX-License-Identifier: BSD-3-Clause
#include "backgroundpicture.h"

#include <picturereader.h>
#include <quillmetadata.h>

#include <QColorSpace>
#include <QRect>
#include <QTransform>

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// No display is larger. A larger value in the store is an error, and a wallpaper of that size
/// could need all the memory.
constexpr int MaximalScreenSide = 8192; // pixels

/// Whether a screen can have this size. The store may contain any number.
bool isScreen(const QSize& size)
{
    return !size.isEmpty() && std::max(size.width(), size.height()) <= MaximalScreenSide;
}

/// How to turn the stored pixels upright: first mirror them, then rotate them clockwise.
struct Orientation
{
    int angle = 0; // degrees
    bool isMirrored = false;

    bool isOnItsSide() const { return angle % 180 != 0; }
};

/// The part of the stored pixels to cut out, and the size to scale it to.
struct Cut
{
    QRect clip;
    QSize scaledSize;
};

Orientation imageOrientation(const QString& path)
{
    // The index is the tag's value less 1. No camera writes 5 and 7. Exif defines them with the
    // rotation first; with the mirroring first, the angles are 270 and 90 degrees.
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
    if (value < 1 || value > int(orientations.size())) {
        return {};
    }
    return orientations.at(size_t(value - 1));
}

QSize uprightSize(const PictureReader& reader, const Orientation& orientation)
{
    const QSize size = reader.size();
    return orientation.isOnItsSide() ? size.transposed() : size;
}

/// The largest centred square of a picture. `source` is the upright size of the picture in pixels,
/// and `size` is the size of the square to make.
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
    return {QRect(left, top, edge, edge), size};
}

/// The part of a picture in the older layout that a screen of `size` pixels shows. The products are
/// computed in single precision, because with double precision some cuts are one pixel larger.
Cut legacyCut(const QSize& source, const Orientation& orientation, const QSize& size)
{
    const int third = size.height() / 3;
    const int legacyHeight = third + third + size.height();
    const auto ratio = [](int dividend, int divisor) { return float(dividend) / float(divisor); };
    const float imageRatio = ratio(source.width(), source.height());
    const float legacyRatio = ratio(size.width(), legacyHeight);
    const float screenRatio = ratio(size.height(), size.width());
    // A picture may claim a size near the largest int. In single precision, this would be rounded
    // up to a number that is too large for an int.
    const auto product = [](int length, float factor) {
        constexpr float maximum = 1073741824.0F; // 2 to the power of 30
        return int(std::min(float(length) * factor, maximum));
    };

    int x = 0;
    int clipWidth = source.width();
    if (imageRatio > legacyRatio) {
        clipWidth = product(source.height(), legacyRatio);
        x = source.width() / 2 - clipWidth / 2;
    }
    const int clipHeight = product(clipWidth, screenRatio);
    int y = int(clipHeight / 960.0 * 58.0);
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
        image.setColorSpace(stored.colorSpace()); // Rotating loses it.
    }
    return image;
}

/// Reads the part of a picture that `cutFor` chooses for a screen of `size` pixels.
template <typename CutFor>
QImage loadCut(const QString& path, const QSize& size, CutFor cutFor)
{
    if (!isScreen(size)) {
        return QImage();
    }
    PictureReader reader(path);
    const Orientation orientation = imageOrientation(path);
    const QSize source = uprightSize(reader, orientation);
    if (!source.isValid()) {
        return QImage();
    }
    const Cut cut = cutFor(source, orientation, size);
    return upright(reader.read(cut.clip, cut.scaledSize), orientation);
}

} // namespace

QImage loadBackgroundImage(const QString& path, const QSize& size)
{
    const int side = std::max(size.width(), size.height());
    return loadCut(path, QSize(side, side), squareCut);
}

QImage loadLegacyBackgroundImage(const QString& path, const QSize& size)
{
    return loadCut(path, size, legacyCut);
}

QImage loadWholeImage(const QString& path)
{
    return PictureReader(path).read();
}
