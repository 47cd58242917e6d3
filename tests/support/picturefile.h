// SPDX-License-Identifier: BSD-3-Clause
#ifndef PICTUREFILE_H
#define PICTUREFILE_H

#include <QSize>
#include <QString>

/*!
    Writes a picture of \a size pixels to \a path, in place of any file there, in the image format
    \a format ("jpg", "png", ...). Returns false if the format or the file cannot be written. The
    folder must exist.
*/
Q_REQUIRED_RESULT bool writePicture(
    const QString& path, const QSize& size, const char* format = "png");

#endif // PICTUREFILE_H
