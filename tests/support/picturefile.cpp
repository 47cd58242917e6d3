// SPDX-License-Identifier: BSD-3-Clause
#include "picturefile.h"

#include <QImage>

bool writePicture(const QString& path, const QSize& size, const char* format)
{
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
        }
    }
    return picture.save(path, format);
}
