// SPDX-License-Identifier: BSD-3-Clause
#include "velmoorzerlinbackground.h"

#include <QImage>

VelmoorZerlinBackground::VelmoorZerlinBackground(const QString& outputPath)
    : m_outputPath(outputPath)
{
}

VelmoorZerlinBackground::~VelmoorZerlinBackground() = default;

QString VelmoorZerlinBackground::outputPath() const
{
    return m_outputPath;
}

void VelmoorZerlinBackground::setPixelRatio(float ratio)
{
    Q_UNUSED(ratio)
}

void VelmoorZerlinBackground::setBlurRounds(int rounds)
{
    Q_UNUSED(rounds)
}

void VelmoorZerlinBackground::setBlurRadius(int radius)
{
    Q_UNUSED(radius)
}

void VelmoorZerlinBackground::setBlurSigma(double sigma)
{
    Q_UNUSED(sigma)
}

void VelmoorZerlinBackground::darken(QImage* image) const
{
    Q_UNUSED(image)
}

// The platform's interface passes the path by value.
void VelmoorZerlinBackground::buildBackgroundImageForPortrait(
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    VelmoorZerlinBackground* background, const QImage& image, QString sourcePath,
    const QImage& applicationImage, const QRectF& rect)
{
    Q_UNUSED(sourcePath)
    Q_UNUSED(applicationImage)
    Q_UNUSED(rect)
    QImage copy = image;
    background->processAppWallpaper(&copy);
}

bool VelmoorZerlinBackground::processAppWallpaper(QImage* image)
{
    return image->save(appImagePath(), "jpg");
}

QString VelmoorZerlinBackground::appImagePath() const
{
    return m_outputPath + QStringLiteral("/wallpaper.jpg");
}
