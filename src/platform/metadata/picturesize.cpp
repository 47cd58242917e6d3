// SPDX-License-Identifier: BSD-3-Clause
#include "picturesize.h"

#include "headersize.h"
#include "pictureformat.h"
#include "picturereader.h"
#include "windowedfile.h"

#include <optional>

namespace {

std::optional<QSize> headerSize(PictureFormat format, WindowedFile& file)
{
    switch (format) {
    case PictureFormat::Unknown:
        return QSize();
    case PictureFormat::Jpeg:
        return jpegSize(file);
    case PictureFormat::Png:
        return pngSize(file);
    case PictureFormat::WebP:
        return webpSize(file);
    case PictureFormat::Tiff:
        return tiffSize(file);
    case PictureFormat::Gif:
        return gifSize(file);
    case PictureFormat::Bmp:
        return bmpSize(file);
    case PictureFormat::Pnm:
        return pnmSize(file);
    case PictureFormat::Heif:
    case PictureFormat::Avif:
        return heifSize(file);
    }
    return {};
}

} // namespace

QSize pictureSize(WindowedFile& file)
{
    const PictureFormat format = pictureFormat(file.read(0, PictureSignatureSize));
    const std::optional<QSize> size = headerSize(format, file);
    return size ? *size : PictureReader(file.file()).size();
}
