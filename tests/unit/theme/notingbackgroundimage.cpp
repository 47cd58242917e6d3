// SPDX-License-Identifier: BSD-3-Clause
#include "notingbackgroundimage.h"

#include <utility>

namespace {

struct Record
{
    QStringList calls;
    NotingBackgroundImage::Build build;
};

Record& record()
{
    static Record instance;
    return instance;
}

void note(const char* name, double value)
{
    record().calls.append(QLatin1String(name) + QLatin1Char(' ') + QString::number(value));
}

} // namespace

QStringList NotingBackgroundImage::takeCalls()
{
    return std::exchange(record().calls, {});
}

const NotingBackgroundImage::Build& NotingBackgroundImage::lastBuild()
{
    return record().build;
}

void NotingBackgroundImage::useBlurParameters(const BlurParameters& parameters)
{
    note("ratio", double(parameters.pixelRatio));
    note("rounds", parameters.rounds);
    note("radius", parameters.radius);
    note("sigma", parameters.sigma);
    SystemBackgroundImage::useBlurParameters(parameters);
}

void NotingBackgroundImage::buildApplicationWallpaper(
    const QImage& image, const QString& sourcePath, const QImage& applicationImage,
    const QRectF& rect)
{
    record().calls.append(QStringLiteral("build"));
    record().build = {image, sourcePath, applicationImage, rect};
    SystemBackgroundImage::buildApplicationWallpaper(image, sourcePath, applicationImage, rect);
}
