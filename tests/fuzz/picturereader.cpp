// SPDX-License-Identifier: BSD-3-Clause
// The format, the size and the pixels of a picture. The decoder is not our code, but the code
// around it is.
#include "picturereader.h"
#include "fuzztarget.h"

namespace {

/// More would test the machine's memory.
constexpr qint64 MaximalPixels = 1024 * 1024;

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
    } else if (size.isValid() && qint64(size.width()) * size.height() <= MaximalPixels) {
        const QImage image = reader.read();
        require(image.isNull() || image.size() == size, "a picture is as large as it says");
    }
}
