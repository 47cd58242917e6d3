// SPDX-License-Identifier: BSD-3-Clause
#include "systembackgroundimage.h"

#include "backgroundpicture.h"
#include "colouranalysis.h"
#include "imaging/wallpaperfile.h"
#include "moodsetfile.h"
#include "themelog.h"

#include <QDir>
#include <QHash>
#include <QStandardPaths>

namespace {

const char* const BuildFunction =
    "Moodset SystemBackgroundImage::buildBackgroundImages(const Moodset&, const QImage&, const "
    "QSize&, const QRectF&, bool)";

/// Moodsets with a lower version have a picture in the older layout.
constexpr int SquarePictureVersion = 2;

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

/// Whether the moodset's wallpaper was converted from the older layout before.
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
    const Source source = loadSource(&built, size, wasValid);
    if (source.image.isNull()) {
        return Moodset();
    }
    MoodsetData* const record = built.data();
    useBlurParameters(blurParameters(size));
    if (source.home != HomeWallpaper::AsItIs) {
        writeHomeWallpaper(
            record->homeWallpaper, source.image, source.home == HomeWallpaper::Darkened);
    }
    buildApplicationWallpaper(source.image, source.file, applicationImage, rect);
    record->applicationWallpaper = appImagePath();
    fillColors(record);
    return built;
}

void SystemBackgroundImage::useBlurParameters(const BlurParameters& parameters)
{
    setBlurParameters(this, parameters);
}

void SystemBackgroundImage::buildApplicationWallpaper(
    const QImage& image, const QString& sourcePath, const QImage& applicationImage,
    const QRectF& rect)
{
    buildBackgroundImageForPortrait(this, image, sourcePath, applicationImage, rect);
}

void SystemBackgroundImage::writeHomeWallpaper(
    const QString& path, const QImage& image, bool darken)
{
    QImage copy = image;
    if (darken) {
        VelmoorZerlinBackground::darken(&copy);
    }
    const QString error = writeWallpaper(copy, path);
    if (!error.isEmpty()) {
        qCWarning(themeLog) << "ERROR writing file:" << error;
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

/// Converts the moodset's picture and stores the result in the cache, unless this was done before.
SystemBackgroundImage::Source SystemBackgroundImage::loadLegacyMoodset(
    MoodsetData* record, const QString& file, const QSize& size)
{
    if (isCachedLegacyMoodset(*record)) {
        qCWarning(themeLog) << BuildFunction << "using cached legacy moodset image from "
                            << record->homeWallpaper;
        return {loadWholeImage(record->homeWallpaper), file, HomeWallpaper::AsItIs};
    }
    const QImage image = loadLegacyBackgroundImage(record->homeWallpaper, size);
    qCWarning(themeLog) << BuildFunction << "using legacy moodset image " << record->homeWallpaper;
    const QString directory = legacyDirectory();
    if (!QDir().mkpath(directory)) {
        qCWarning(themeLog) << "Could not create legacy wallpaper directory" << directory;
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
        qCWarning(themeLog) << BuildFunction << "building legacy moodset background "
                            << record->homeWallpaper;
        image = loadLegacyBackgroundImage(file, size);
    } else {
        image = loadBackgroundImage(file, size);
    }
    record->homeWallpaper = outputPath() + homeWallpaperName(file);
    return {image, file, HomeWallpaper::Darkened};
}

/// Gives the record the colours that it lacks.
void SystemBackgroundImage::fillColors(MoodsetData* record) const
{
    const auto fill = [](QColor* color, const QColor& value) {
        if (!color->isValid()) {
            *color = value;
        }
    };
    fill(&record->highlightColor, highlightFromDominant(m_dominantColor));
    fill(&record->secondaryHighlightColor, secondaryHighlightFrom(record->highlightColor));
    fill(&record->primaryColor, usualPrimaryColor());
    fill(&record->secondaryColor, usualSecondaryColor());
}
