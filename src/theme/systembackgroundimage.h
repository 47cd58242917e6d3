// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"

#include <velmoorzerlinbackground.h>

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>

/// Makes the two wallpapers of a moodset, and from their pixels the colours that it lacks. For one
/// build; main thread only.
class SystemBackgroundImage : public VelmoorZerlinBackground
{
public:
    SystemBackgroundImage();

    /// The record with its wallpapers and all its colours; a null handle if its file is no moodset,
    /// its picture cannot be read or its directory cannot be made. `moodset` names a moodset file
    /// or a picture by its URL. `wasValid` tells that the record is the stored one; else a moodset
    /// file is read first.
    ///
    /// `size` is the screen's, in pixels. `applicationImage` and `rect` are handed on to
    /// VelmoorZerlinBackground.
    ///
    /// A picture gets a darkened copy as the home wallpaper, under a name made from its path. A
    /// moodset's own picture is used where it lies, and one in the older layout is converted once.
    Moodset buildBackgroundImages(
        const Moodset& moodset, const QImage& applicationImage, const QSize& size,
        const QRectF& rect, bool wasValid);

    /// Writes a picture as the home wallpaper in the format of the path's suffix, at quality 93. A
    /// failure is logged.
    void writeHomeWallpaper(const QString& path, const QImage& image, bool darken);

protected:
    bool processAppWallpaper(QImage* image) override;

private:
    enum class HomeWallpaper {
        AsItIs, ///< The file is there already.
        Copied, ///< Written from the picture as it is.
        Darkened, ///< Written from a darkened copy.
    };

    /// What the wallpapers are made from; a null image if there is nothing.
    struct Source
    {
        QImage image;
        /// The path that the application wallpaper is named after.
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
