// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"
#include "picturelook.h"

#include <velmoorzerlinbackground.h>

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>

/// Makes the two wallpapers of a moodset and, from their pixels, the colours that it lacks. Use an
/// object for one build only, on the main thread.
class SystemBackgroundImage : public VelmoorZerlinBackground
{
public:
    SystemBackgroundImage();

    /// The record with its wallpapers and all its colours. A null handle if its file is not a
    /// moodset, its picture cannot be read or its directory cannot be made. `moodset` has the URL
    /// of a moodset file or a picture. `wasValid` means that it is the stored record; otherwise a
    /// moodset file is read first.
    ///
    /// `size` is the size of the screen in pixels. `applicationImage` and `rect` are passed to
    /// VelmoorZerlinBackground.
    ///
    /// A picture gets a darkened copy as the home wallpaper, with a name that is made from its
    /// path. A moodset's own picture stays where it is; one in the older layout is converted once.
    Moodset buildBackgroundImages(
        const Moodset& moodset, const QImage& applicationImage, const QSize& size,
        const QRectF& rect, bool wasValid);

    /// Writes a picture as the home wallpaper; see writeWallpaper(). A failure is logged.
    void writeHomeWallpaper(const QString& path, const QImage& image, bool darken);

protected:
    bool processAppWallpaper(QImage* image) override;
    /// The two calls from a build to the wallpaper library. Tests replace them.
    /// @{
    virtual void useBlurParameters(const BlurParameters& parameters);
    virtual void buildApplicationWallpaper(
        const QImage& image, const QString& sourcePath, const QImage& applicationImage,
        const QRectF& rect);
    /// @}

private:
    enum class HomeWallpaper {
        AsItIs, ///< The file exists already.
        Copied, ///< The file is written from the picture without changes.
        Darkened, ///< The file is written from a darkened copy.
    };

    /// The picture that the wallpapers are made from, or a null image.
    struct Source
    {
        QImage image;
        /// The path that gives the application wallpaper its name.
        QString file;
        HomeWallpaper home = HomeWallpaper::AsItIs;
    };

    Source loadSource(Moodset* moodset, const QSize& size, bool wasValid) const;
    static Source loadLegacyMoodset(MoodsetData* record, const QString& file, const QSize& size);
    Source loadPicture(MoodsetData* record, const QString& file, const QSize& size) const;
    void fillColors(MoodsetData* record) const;

    float m_averageValue = 0;
    QColor m_dominantColor;
};
