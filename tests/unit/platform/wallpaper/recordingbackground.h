// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "velmoorzerlinbackground.h"

#include <QImage>

/// Records the calls of processAppWallpaper() and their results.
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
