// SPDX-License-Identifier: BSD-3-Clause
#include "wallpaperfile.h"

#include <QColorSpace>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

namespace {

/// At this quality, the encoder leaves no visible artefacts, and the files stay small.
constexpr int Quality = 93;

/// `colorSpace`, or a colour space for colours with the same brightness if it is one for grey
/// pictures, which Qt does not accept for coloured images. Invalid if there is none.
QColorSpace forColors(const QColorSpace& colorSpace)
{
    // The offset in a colour profile of the type of its values.
    constexpr int position = 16;
    constexpr int length = 4;
    if (colorSpace.iccProfile().mid(position, length) != "GRAY") {
        return colorSpace;
    }
    if (colorSpace.transferFunction() == QColorSpace::TransferFunction::Custom) {
        return QColorSpace();
    }
    return QColorSpace(
        QColorSpace::Primaries::SRgb, colorSpace.transferFunction(), colorSpace.gamma());
}

/// The pixels of `image`, possibly shared, and their colour space.
QImage bareImage(const QImage& image)
{
    QImage bare(
        image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    // To set a colour table, even an empty one, copies the pixels.
    if (image.colorCount() > 0) {
        bare.setColorTable(image.colorTable());
    }
    bare.setColorSpace(forColors(image.colorSpace()));
    const QPixelFormat::ColorModel model = bare.pixelFormat().colorModel();
    const bool mayBeGrey = model == QPixelFormat::Grayscale || model == QPixelFormat::Indexed;
    // Qt does not write the colour space of a grey JPEG file, and a colour space for colours does
    // not fit it either.
    return mayBeGrey && bare.colorSpace().isValid() ? bare.convertToFormat(QImage::Format_RGB32)
                                                    : bare;
}

} // namespace

QString writeWallpaper(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    QImageWriter writer(&file, QFileInfo(path).suffix().toLatin1());
    writer.setQuality(Quality);
    if (!writer.write(bareImage(image))) {
        const bool isFilesFault = file.isOpen() && file.error() != QFileDevice::NoError;
        return isFilesFault ? file.errorString() : writer.errorString();
    }
    // commit() alone does not notice that the last bytes cannot be written.
    return file.flush() && file.commit() ? QString() : file.errorString();
}
