// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSize>
#include <QString>

/// Writes a picture of `size` pixels to `path`, in the image format `format` ("jpg", "png", ...),
/// and replaces any file there. Returns false if the format or the file cannot be written. The
/// directory must exist.
Q_REQUIRED_RESULT bool writePicture(
    const QString& path, const QSize& size, const char* format = "png");
