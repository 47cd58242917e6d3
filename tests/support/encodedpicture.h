// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

class QImage;

/// The content of a file with this picture, in the image format `format` ("jpeg", "png", ...). A
/// failure fails the current test.
QByteArray encodedPicture(const QImage& image, const char* format, bool isProgressive = false);

/// The content of a BMP file whose rows are stored from top to bottom. Its height is negative for
/// that reason.
QByteArray topDownBmp(const QImage& image);
