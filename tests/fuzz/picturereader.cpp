// SPDX-License-Identifier: BSD-3-Clause
// The format, the size and the pixels of a picture. The decoder is not our code, but the code
// around it is.
#include "picturereader.h"
#include "fuzztarget.h"

#include <QtEndian>

namespace {

/// More would test the machine's memory.
constexpr qint64 MaximalPixels = 1024 * 1024;

qint64 pixelCount(const QSize& size)
{
    return qint64(size.width()) * size.height();
}

/// The size of a GIF picture's screen; invalid for other formats. Qt draws the picture on the whole
/// screen, although it does not believe a vast one when it is asked for the size.
QSize screenOfGif(const QByteArray& input)
{
    constexpr int place = 6;
    constexpr int length = 4;
    if (pictureFormat(input) != PictureFormat::Gif || input.size() < place + length) {
        return {};
    }
    const char* const sides = input.constData() + place;
    return {qFromLittleEndian<quint16>(sides), qFromLittleEndian<quint16>(sides + 2)};
}

} // namespace

void runTarget(const QByteArray& input)
{
    // Decoders may log anything.
    allowNoWarningsBut({""});
    const bool isListed = pictureFormat(input.left(PictureSignatureSize)) != PictureFormat::Unknown;
    PictureReader reader(input);

    const QSize size = reader.size();

    require(isListed || !size.isValid(), "no decoder is asked for another format");
    require(!size.isValid() || !size.isEmpty(), "a size is positive or invalid");
    require(
        pictureFormat(input) == pictureFormat(input.left(PictureSignatureSize)),
        "the start tells the format");
    if (!isListed) {
        require(reader.read().isNull(), "a picture of another format is not decoded");
    } else if (
        size.isValid() && qMax(pixelCount(size), pixelCount(screenOfGif(input))) <= MaximalPixels) {
        const QImage image = reader.read();
        require(
            image.isNull() || image.size() == size || image.size() == screenOfGif(input),
            "a picture is as large as it says");
    }
}
