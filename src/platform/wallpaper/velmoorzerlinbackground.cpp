// SPDX-License-Identifier: BSD-3-Clause
#include "velmoorzerlinbackground.h"

#include "blur/wallpaperblur.h"
#include "imaging/wallpaperfile.h"
#include "opaquecopy.h"
#include "platformlog.h"

#include <QDir>
#include <QHash>
#include <QImage>
#include <QRectF>

#include <algorithm>

namespace {

/// With larger values, a build could block the caller for minutes.
constexpr double MaximalRatio = 8;
constexpr int MaximalRounds = 100;
constexpr int MaximalRadius = 32;
constexpr double MaximalSigma = 32;

double bounded(double value, double maximum)
{
    return qIsNaN(value) ? 0 : qBound(0.0, value, maximum);
}

/// The contrast between white text and a darkened white pixel is at least 3:1.
constexpr QRgb darkened(QRgb pixel)
{
    constexpr QRgb factor = 148;
    const auto channel = [pixel](int shift) {
        return (((pixel >> shift & 0xff) * factor + 128) >> 8) << shift;
    };
    return 0xff000000 | channel(16) | channel(8) | channel(0);
}

/// The part of `picture` that lies in `rect`, or the whole picture if no part does.
QRect partInside(const QRectF& rect, const QRect& picture)
{
    const QRect part = rect.toAlignedRect() & picture;
    return part.isEmpty() ? picture : part;
}

} // namespace

VelmoorZerlinBackground::VelmoorZerlinBackground(const QString& outputPath)
    : m_outputPath(outputPath)
{
    // If this fails, writing a file fails later.
    QDir().mkpath(outputPath);
}

VelmoorZerlinBackground::~VelmoorZerlinBackground() = default;

QString VelmoorZerlinBackground::outputPath() const
{
    return m_outputPath;
}

void VelmoorZerlinBackground::setPixelRatio(float ratio)
{
    m_pixelRatio = bounded(double(ratio), MaximalRatio);
}

void VelmoorZerlinBackground::setBlurRounds(int rounds)
{
    m_rounds = qBound(0, rounds, MaximalRounds);
}

void VelmoorZerlinBackground::setBlurRadius(int radius)
{
    m_radius = qBound(0, radius, MaximalRadius);
}

void VelmoorZerlinBackground::setBlurSigma(double sigma)
{
    m_sigma = bounded(sigma, MaximalSigma);
}

void VelmoorZerlinBackground::darken(QImage* image) const
{
    if (image->format() != QImage::Format_RGB32) {
        *image = opaqueCopy(*image, image->rect());
    }
    for (int y = 0; y < image->height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image->scanLine(y));
        std::transform(row, row + image->width(), row, darkened);
    }
}

void VelmoorZerlinBackground::buildBackgroundImageForPortrait(
    VelmoorZerlinBackground* background, const QImage& image,
    QString sourcePath, // NOLINT(performance-unnecessary-value-param): the interface's form
    const QImage& applicationImage, const QRectF& rect)
{
    const QString name = QStringLiteral("%1ap.jpg").arg(qHash(sourcePath, 0), 0, 16);
    background->m_appImagePath = background->m_outputPath + QLatin1Char('/') + name;
    background->build(applicationImage.isNull() ? image : applicationImage, rect);
}

void VelmoorZerlinBackground::build(const QImage& picture, const QRectF& rect)
{
    QImage wallpaper = opaqueCopy(picture, partInside(rect, picture.rect()));
    const double radius = m_radius * m_pixelRatio;
    blurWallpaper(&wallpaper, {m_rounds, qRound(radius), m_sigma * m_pixelRatio});
    processAppWallpaper(&wallpaper);
}

bool VelmoorZerlinBackground::processAppWallpaper(QImage* image)
{
    const QString error = writeWallpaper(*image, m_appImagePath);
    if (!error.isEmpty()) {
        qCWarning(platformLog) << "Cannot write the application wallpaper:" << m_appImagePath
                               << error;
    }
    return error.isEmpty();
}

QString VelmoorZerlinBackground::appImagePath() const
{
    return m_appImagePath;
}
