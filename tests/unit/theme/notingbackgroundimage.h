// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme/systembackgroundimage.h"

#include <QImage>
#include <QRectF>
#include <QString>
#include <QStringList>

/// Records the calls of the wallpaper library, and passes them on.
class NotingBackgroundImage : public SystemBackgroundImage
{
public:
    struct Build
    {
        QImage image;
        QString sourcePath;
        QImage applicationImage;
        QRectF rect;
    };

    /// The calls of all objects since the last time, with their arguments: "rounds 15", "build".
    static QStringList takeCalls();
    /// The latest build of any object.
    static const Build& lastBuild();

protected:
    void useBlurParameters(const BlurParameters& parameters) override;
    void buildApplicationWallpaper(
        const QImage& image, const QString& sourcePath, const QImage& applicationImage,
        const QRectF& rect) override;
};
