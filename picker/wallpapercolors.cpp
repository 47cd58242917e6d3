// SPDX-License-Identifier: BSD-3-Clause
#include "wallpapercolors.h"

#include "colorharmony.h"
#include "contrast.h"
#include "thumbnail.h"

#include <QImage>
#include <QTimer>
#include <QtConcurrentRun>

#include <algorithm>

namespace {

/// The part of black with which toolkits dim the application wallpaper.
constexpr qreal ToolkitDimming = 0.6;

QImage readSmall(const QUrl& url)
{
    constexpr QSize small(96, 96);
    return thumbnail(url.toLocalFile(), small);
}

QColor colorOf(const QVariant& value)
{
    return value.value<QColor>();
}

/// Changes the lightness and the opacity of a colour; both are from 0 to 1.
QColor withLightness(const QColor& color, qreal lightness, qreal opacity)
{
    return QColor::fromHslF(
        std::max(0.0, color.hslHueF()), color.hslSaturationF(), lightness, opacity);
}

} // namespace

WallpaperColors::WallpaperColors(QObject* parent)
    : QObject(parent)
{
    connect(&m_reading, &QFutureWatcherBase::finished, this, &WallpaperColors::take);
}

// The code that reads does not use this object, and ends by itself.
WallpaperColors::~WallpaperColors() = default;

void WallpaperColors::setHomeWallpaper(const QUrl& url)
{
    if (url != m_home) {
        m_home = url;
        readSoon();
    }
}

void WallpaperColors::setApplicationWallpaper(const QUrl& url)
{
    if (url != m_application) {
        m_application = url;
        readSoon();
    }
}

qreal WallpaperColors::contrast(const QVariant& color) const
{
    const QColor text = colorOf(color);
    if (m_surfaces.empty() || !text.isValid()) {
        return 0;
    }
    constexpr qreal largest = 21;
    qreal lowest = largest;
    for (const QColor& surface : m_surfaces) {
        lowest = std::min(lowest, contrastOn(surface, text));
    }
    return lowest;
}

bool WallpaperColors::isEnough(const QVariant& color) const
{
    return contrast(color) >= EnoughContrast;
}

QColor WallpaperColors::mended(const QVariant& color) const
{
    constexpr int steps = 50;
    const QColor text = colorOf(color);
    QColor best = text;
    qreal most = contrast(text);
    for (int step = 0; step <= steps; ++step) {
        const qreal change = qreal(step) / steps;
        const qreal opacity = text.alphaF() + (1 - text.alphaF()) * change;
        for (const qreal end : {1.0, 0.0}) {
            const qreal lightness = text.lightnessF() + (end - text.lightnessF()) * change;
            const QColor other = withLightness(text, lightness, opacity);
            const qreal reached = contrast(other);
            if (reached > most) {
                most = reached;
                best = other;
            }
        }
        if (most >= EnoughContrast) {
            break;
        }
    }
    return best;
}

WallpaperColors::Reading WallpaperColors::read(const QUrl& home, const QUrl& application)
{
    Reading reading;
    const QImage homePicture = readSmall(home);
    const QImage applicationPicture = readSmall(application);
    if (!homePicture.isNull()) {
        reading.surfaces.push_back(meanColor(homePicture));
    }
    if (!applicationPicture.isNull()) {
        reading.surfaces.push_back(meanColor(applicationPicture, ToolkitDimming));
    }
    const std::vector<QColor> colors =
        harmoniousColors(applicationPicture.isNull() ? homePicture : applicationPicture);
    for (const QColor& color : colors) {
        reading.candidates.append(color);
    }
    return reading;
}

// The two URLs change one after the other.
void WallpaperColors::readSoon()
{
    Q_EMIT wallpapersChanged();
    if (!m_isScheduled) {
        m_isScheduled = true;
        QTimer::singleShot(0, this, [this] {
            m_isScheduled = false;
            m_reading.setFuture(QtConcurrent::run(&WallpaperColors::read, m_home, m_application));
        });
    }
}

void WallpaperColors::take()
{
    const Reading reading = m_reading.result();
    m_surfaces = reading.surfaces;
    m_candidates = reading.candidates;
    Q_EMIT readyChanged();
}
