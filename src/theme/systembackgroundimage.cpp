// SPDX-License-Identifier: BSD-3-Clause
#include "systembackgroundimage.h"

#include "backgroundpicture.h"
#include "colouranalysis.h"
#include "moodsetfile.h"

#include <mgconfitem.h>

#include <QDebug>
#include <QDir>
#include <QHash>
#include <QImageWriter>
#include <QStandardPaths>

namespace {

const char* const BuildFunction =
    "Moodset SystemBackgroundImage::buildBackgroundImages(const Moodset&, const QImage&, const "
    "QSize&, const QRectF&, bool)";

/// Moodsets below this version come with a picture in the older layout.
constexpr int SquarePictureVersion = 2;

constexpr int HomeWallpaperQuality = 93;

/// The part of the highlight colour's brightness that the second highlight colour lacks.
constexpr int SecondaryHighlightDarkness = 125; // percent

struct BlurParameters
{
    float pixelRatio;
    int rounds;
    int radius;
    double sigma;
};

QString outputDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
        + QStringLiteral("/com/zavro/components/bgimages");
}

QString legacyDirectory()
{
    return outputDirectory() + QStringLiteral("/legacy");
}

QString homeWallpaperName(const QString& sourcePath)
{
    return QStringLiteral("/%1hp.jpg").arg(qHash(sourcePath, 0), 0, 16);
}

template <typename T>
T setting(const char* name, T defaultValue)
{
    const QVariant value =
        MGConfItem(QStringLiteral("/desktop/velmoor/zerlin/") + QLatin1String(name)).value();
    return value.isValid() ? value.value<T>() : defaultValue;
}

BlurParameters blurParameters(const QSize& screen)
{
    return {
        setting("theme_pixel_ratio", static_cast<float>(screen.width() / 540.0)),
        setting("theme_bg_blur_rounds", 15), setting("theme_bg_blur_radius", 4),
        setting("theme_bg_blur_sigma", 1.3)};
}

/// Whether the moodset's wallpaper is one that was converted from the older layout earlier.
bool isCachedLegacyMoodset(const MoodsetData& record)
{
    return record.version < SquarePictureVersion
        && record.homeWallpaper.startsWith(legacyDirectory());
}

} // namespace

SystemBackgroundImage::SystemBackgroundImage()
    : VelmoorZerlinBackground(outputDirectory())
{
}

Moodset SystemBackgroundImage::buildBackgroundImages(
    const Moodset& moodset, const QImage& applicationImage, const QSize& size, const QRectF& rect,
    bool wasValid)
{
    Moodset built = moodset;
    const BlurParameters blur = blurParameters(size);
    const Source source = loadSource(&built, size, wasValid);
    if (source.image.isNull()) {
        return Moodset();
    }
    MoodsetData* const record = built.data();
    setPixelRatio(blur.pixelRatio);
    setBlurRounds(blur.rounds);
    setBlurRadius(blur.radius);
    setBlurSigma(blur.sigma);
    if (source.home != HomeWallpaper::AsItIs) {
        writeHomeWallpaper(
            record->homeWallpaper, source.image, source.home == HomeWallpaper::Darkened);
    }
    buildBackgroundImageForPortrait(this, source.image, source.file, applicationImage, rect);
    record->applicationWallpaper = appImagePath();
    fillColors(record);
    return built;
}

void SystemBackgroundImage::writeHomeWallpaper(
    const QString& path, const QImage& image, bool darken)
{
    QImageWriter writer(path);
    writer.setQuality(HomeWallpaperQuality);
    QImage copy = image;
    if (darken) {
        VelmoorZerlinBackground::darken(&copy);
    }
    if (!writer.write(copy)) {
        qWarning() << "ERROR writing file:" << writer.errorString();
    }
}

bool SystemBackgroundImage::processAppWallpaper(QImage* image)
{
    analyseImageColors(*image, &m_averageValue, &m_dominantColor);
    return VelmoorZerlinBackground::processAppWallpaper(image);
}

SystemBackgroundImage::Source SystemBackgroundImage::loadSource(
    Moodset* moodset, const QSize& size, bool wasValid) const
{
    MoodsetData* const record = moodset->data();
    const QString file = record->url.toLocalFile();
    if (!file.endsWith(QLatin1String(".moodset"))) {
        return loadPicture(record, file, size);
    }
    if (!wasValid && !readMoodsetFile(*moodset, file)) {
        return {};
    }
    if (record->version < SquarePictureVersion) {
        return loadLegacyMoodset(record, file, size);
    }
    return {loadBackgroundImage(record->homeWallpaper, size), file, HomeWallpaper::AsItIs};
}

/// Converts the moodset's picture into the cache, unless that was done before.
SystemBackgroundImage::Source SystemBackgroundImage::loadLegacyMoodset(
    MoodsetData* record, const QString& file, const QSize& size)
{
    if (isCachedLegacyMoodset(*record)) {
        qWarning() << BuildFunction << "using cached legacy moodset image from "
                   << record->homeWallpaper;
        return {loadWholeImage(record->homeWallpaper), file, HomeWallpaper::AsItIs};
    }
    const QImage image = loadLegacyBackgroundImage(record->homeWallpaper, size);
    qWarning() << BuildFunction << "using legacy moodset image " << record->homeWallpaper;
    const QString directory = legacyDirectory();
    if (!QDir().mkpath(directory)) {
        qWarning() << "Could not create legacy wallpaper directory" << directory;
        return {};
    }
    record->homeWallpaper = directory + homeWallpaperName(file);
    return {image, record->homeWallpaper, HomeWallpaper::Copied};
}

SystemBackgroundImage::Source SystemBackgroundImage::loadPicture(
    MoodsetData* record, const QString& file, const QSize& size) const
{
    QImage image;
    if (record->version < SquarePictureVersion) {
        qWarning() << BuildFunction << "building legacy moodset background "
                   << record->homeWallpaper;
        image = loadLegacyBackgroundImage(file, size);
    } else {
        image = loadBackgroundImage(file, size);
    }
    record->homeWallpaper = outputPath() + homeWallpaperName(file);
    return {image, file, HomeWallpaper::Darkened};
}

/// Gives the record the colours that it does not bring along.
void SystemBackgroundImage::fillColors(MoodsetData* record) const
{
    const auto fill = [](QColor* color, const QColor& value) {
        if (!color->isValid()) {
            *color = value;
        }
    };
    fill(&record->highlightColor, highlightFromDominant(m_dominantColor));
    fill(
        &record->secondaryHighlightColor,
        record->highlightColor.darker(SecondaryHighlightDarkness));
    fill(&record->primaryColor, QColor(255, 255, 255, 255));
    fill(&record->secondaryColor, QColor(255, 255, 255, 176));
}
