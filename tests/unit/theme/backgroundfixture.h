// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"
#include "testfolder.h"

#include <QImage>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

/// A directory for moodset files and pictures, with an empty cache and an empty key/value store.
class BackgroundFixture
{
public:
    static constexpr QSize Screen{54, 96};
    static constexpr QRectF Rect{0, 0, 96, 96};

    BackgroundFixture();

    /// Writes a picture without loss. Returns its path.
    QString writePicture(const QString& name, const QImage& picture);

    /// Writes a moodset file, and returns its record as far as it is known before the file is read.
    /// Write single quotes in `content`. The picture that it may name, "images/w.png", has 160 x
    /// 160 pixels for `version` 2, and 54 x 160 pixels, as in the older layout, for any other
    /// version.
    Moodset writeMoodset(const QByteArray& content, int version);

    /// The picture that writeMoodset() has written.
    QImage wallpaper() const { return m_wallpaper; }
    QString wallpaperPath() const;

    /// A record with only its file.
    static Moodset recordOf(const QString& path);

    /// Builds the wallpapers of a record for the screen.
    static Moodset build(const Moodset& moodset, bool wasValid = true);

    /// The directories of wallpapers, and of converted wallpapers.
    static QString outputDirectory();
    static QString legacyDirectory();
    /// The name, with a "/" in front, of the home wallpaper that is made from `source`.
    static QString homeWallpaperName(const QString& source);
    /// The names of all files in a folder, sorted.
    static QStringList filesIn(const QString& folder);

    TestFolder folder;

private:
    QImage m_wallpaper;
};

/// The beginning of all messages about a build.
QString buildSignature();

/// The pixels of a picture file.
QImage pixelsOf(const QString& path);
QImage pixelsOf(const QImage& image);

/// The pixels that the home wallpaper of an image has as a JPEG file of a quality.
QImage asJpeg(const QImage& image, int quality);

/// The image after VelmoorZerlinBackground has darkened it.
QImage darkened(const QImage& image);
