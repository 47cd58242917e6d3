// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

class QImage;

/// A picture as the content of a file in the image format `format` ("jpeg", "png", ...). A failure
/// fails the current test.
QByteArray encodedPicture(const QImage& image, const char* format, bool isProgressive = false);
