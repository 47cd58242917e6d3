// SPDX-License-Identifier: BSD-3-Clause
#include "wallpapercalls.h"

#include <velmoorzerlinbackground.h>

#include <utility>

namespace {

struct Record
{
    QStringList calls;
    WallpaperCalls::Build build;
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

// The linker puts these in the way.
// NOLINTBEGIN(bugprone-reserved-identifier, performance-unnecessary-value-param)
extern "C" {
void __real__ZN23VelmoorZerlinBackground13setPixelRatioEf(VelmoorZerlinBackground*, float);
void __real__ZN23VelmoorZerlinBackground13setBlurRoundsEi(VelmoorZerlinBackground*, int);
void __real__ZN23VelmoorZerlinBackground13setBlurRadiusEi(VelmoorZerlinBackground*, int);
void __real__ZN23VelmoorZerlinBackground12setBlurSigmaEd(VelmoorZerlinBackground*, double);
void __real__ZN23VelmoorZerlinBackground31buildBackgroundImageForPortraitEPS_RK6QImage7QStringS3_RK6QRectF(
    VelmoorZerlinBackground*, const QImage&, QString, const QImage&, const QRectF&);

void __wrap__ZN23VelmoorZerlinBackground13setPixelRatioEf(
    VelmoorZerlinBackground* background, float ratio)
{
    note("ratio", double(ratio));
    __real__ZN23VelmoorZerlinBackground13setPixelRatioEf(background, ratio);
}

void __wrap__ZN23VelmoorZerlinBackground13setBlurRoundsEi(
    VelmoorZerlinBackground* background, int rounds)
{
    note("rounds", rounds);
    __real__ZN23VelmoorZerlinBackground13setBlurRoundsEi(background, rounds);
}

void __wrap__ZN23VelmoorZerlinBackground13setBlurRadiusEi(
    VelmoorZerlinBackground* background, int radius)
{
    note("radius", radius);
    __real__ZN23VelmoorZerlinBackground13setBlurRadiusEi(background, radius);
}

void __wrap__ZN23VelmoorZerlinBackground12setBlurSigmaEd(
    VelmoorZerlinBackground* background, double sigma)
{
    note("sigma", sigma);
    __real__ZN23VelmoorZerlinBackground12setBlurSigmaEd(background, sigma);
}

void __wrap__ZN23VelmoorZerlinBackground31buildBackgroundImageForPortraitEPS_RK6QImage7QStringS3_RK6QRectF(
    VelmoorZerlinBackground* background, const QImage& image, QString sourcePath,
    const QImage& applicationImage, const QRectF& rect)
{
    record().calls.append(QStringLiteral("build"));
    record().build = {image, sourcePath, applicationImage, rect};
    __real__ZN23VelmoorZerlinBackground31buildBackgroundImageForPortraitEPS_RK6QImage7QStringS3_RK6QRectF(
        background, image, sourcePath, applicationImage, rect);
}
}
// NOLINTEND(bugprone-reserved-identifier, performance-unnecessary-value-param)

QStringList WallpaperCalls::take()
{
    return std::exchange(record().calls, {});
}

const WallpaperCalls::Build& WallpaperCalls::lastBuild()
{
    return record().build;
}
