// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "velmoorzerlinbackground.h"

#include <QImage>

/// Keeps what processAppWallpaper() is called with, and with what result.
class RecordingBackground : public VelmoorZerlinBackground
{
public:
    using VelmoorZerlinBackground::VelmoorZerlinBackground;

    bool processAppWallpaper(QImage* image) override
    {
        ++calls;
        wallpaper = image->copy();
        isWritten = VelmoorZerlinBackground::processAppWallpaper(image);
        return isWritten;
    }

    int calls = 0;
    QImage wallpaper;
    bool isWritten = false;
};
