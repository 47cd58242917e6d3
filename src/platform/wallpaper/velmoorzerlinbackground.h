// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class QImage;
class QRectF;

/// Makes the pictures that stand behind the home screen and behind applications: darkens the home
/// wallpaper, and blurs a picture into the application wallpaper and writes that to a file.
///
/// Wallpapers are opaque: where a picture is transparent, black shows through. Any QImage format is
/// taken. Everything runs on the calling thread, and no other is started; use an object from one
/// thread at a time.
class VelmoorZerlinBackground
{
public:
    /// Writes to the folder `outputPath`, which is made if it is missing. If it cannot be made,
    /// each build warns that it cannot write.
    explicit VelmoorZerlinBackground(const QString& outputPath);
    virtual ~VelmoorZerlinBackground();
    Q_DISABLE_COPY_MOVE(VelmoorZerlinBackground)

    /// The folder that was given to the constructor.
    [[nodiscard]] QString outputPath() const;

    /// The parameters of the next build: the picture goes through `rounds` passes of a Gaussian of
    /// `radius` and `sigma`, both in pixels of a screen of ratio 1 and so multiplied by the ratio.
    /// What lies beyond an edge has the colour of the edge's pixel, in each pass anew. A parameter
    /// out of range counts as the nearest in range, and one that is no number as 0; where any is 0
    /// the picture stays sharp. From 8 rounds on, the time that a build takes does not grow with
    /// them.
    /// @{
    /// 0 to 8; 1 if not set.
    void setPixelRatio(float ratio);
    /// 0 to 100; 15 if not set.
    void setBlurRounds(int rounds);
    /// 0 to 32; 4 if not set.
    void setBlurRadius(int radius);
    /// 0 to 32; 1.3 if not set.
    void setBlurSigma(double sigma);
    /// @}

    /// Darkens `image` in place, so that white text can be read on it: each channel c becomes
    /// (148 c + 128) >> 8. Pixels of another format than QImage::Format_RGB32 become that. A null
    /// image stays as it is.
    void darken(QImage* image) const;

    /// Makes the application wallpaper with the parameters of `background`.
    ///
    /// It is made from `applicationImage`, a picture of its own for the applications, or from
    /// `image` if that is null; of either only the part inside `rect`, in pixels, counts, or all
    /// of it where `rect` lies outside. Neither image is changed. A blurred copy goes to
    /// processAppWallpaper(), which may look at it and change it, and which writes it to the file
    /// that appImagePath() names from then on: in the output folder, under a name made from
    /// `sourcePath`, so that a source has one wallpaper and overwrites it.
    ///
    /// If there is no picture, or no memory for one, processAppWallpaper() gets a null image.
    static void buildBackgroundImageForPortrait(
        VelmoorZerlinBackground* background, const QImage& image, QString sourcePath,
        const QImage& applicationImage, const QRectF& rect);

    /// The last step of a build, called with the blurred wallpaper: writes it to appImagePath(), as
    /// a JPEG. A reader sees the old file or the new one, and never a part. An override must call
    /// this at its end. False, with one warning, if the file could not be written; what was there
    /// then stays.
    virtual bool processAppWallpaper(QImage* image);

    /// The path of the last build's application wallpaper; empty before the first build.
    [[nodiscard]] QString appImagePath() const;

private:
    void build(const QImage& picture, const QRectF& rect);

    const QString m_outputPath;
    QString m_appImagePath;
    double m_pixelRatio = 1;
    int m_rounds = 15;
    int m_radius = 4;
    double m_sigma = 1.3;
};
