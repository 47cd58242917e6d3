// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// The formats of pictures that are given to a decoder. A file of any other format cannot be read
/// as a picture, whatever plugins the system has: some plugins hang or crash on hostile files, and
/// some execute their content.
enum class PictureFormat { Unknown, Jpeg, Png, WebP, Tiff, Gif, Bmp, Pnm, Heif, Avif };

/// The number of bytes at the start of a file that are needed to find its format.
constexpr int PictureSignatureSize = 64;

/// The format of the file that begins with `start`, according to these bytes alone. `start` has
/// PictureSignatureSize bytes, or is the whole of a shorter file.
PictureFormat pictureFormat(const QByteArray& start);

/// Qt's name of a format. Only the plugins for this format have this name. Empty for Unknown.
QByteArray decoderName(PictureFormat format);
