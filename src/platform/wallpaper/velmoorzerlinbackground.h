// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class QImage;
class QRectF;

/// Makes the pictures behind the home screen and behind applications: darkens the home wallpaper,
/// and blurs a picture into the application wallpaper and writes it to a file.
///
/// Wallpapers are opaque: transparent areas become black. They keep the picture's colour space. Any
/// QImage format is accepted. All work runs on the calling thread, and no other thread is started.
/// Use an object from one thread at a time.
class VelmoorZerlinBackground
{
public:
    /// Writes to the directory `outputPath`, which is made if it is missing. If it cannot be made,
    /// each build warns that it cannot write.
    explicit VelmoorZerlinBackground(const QString& outputPath);
    virtual ~VelmoorZerlinBackground();
    Q_DISABLE_COPY_MOVE(VelmoorZerlinBackground)

    /// The directory that was given to the constructor.
    QString outputPath() const;

    /// The parameters of the next build. The picture goes through `rounds` passes of a Gaussian
    /// with `radius` and `sigma`. Both are in pixels of a screen with the ratio 1, so they are
    /// multiplied by the ratio. Beyond an edge, each pass uses the colour of the edge's pixel. A
    /// parameter that is out of range is replaced by the nearest value in the range, and one that
    /// is not a number by 0. If any parameter is 0, the picture stays sharp. For a given size of
    /// picture, the time of a build is limited, whatever the parameters are, and many rounds take
    /// no longer than a few.
    /// @{
    /// From 0 to 8; the default is 1.
    void setPixelRatio(float ratio);
    /// From 0 to 100; the default is 15.
    void setBlurRounds(int rounds);
    /// From 0 to 32; the default is 4.
    void setBlurRadius(int radius);
    /// From 0 to 32; the default is 1.3.
    void setBlurSigma(double sigma);
    /// @}

    /// Darkens `image` in place, so that white text is readable on it: each channel c becomes (148
    /// c + 128) >> 8. Pixels of other formats are converted to QImage::Format_RGB32. A null image
    /// does not change.
    void darken(QImage* image) const;

    /// Makes the application wallpaper with the parameters of `background`.
    ///
    /// It is made from `applicationImage`, a separate picture for the applications, or from `image`
    /// if that is null. Only the part inside of `rect`, in pixels, is used, or the whole picture if
    /// `rect` lies outside of it. Both images stay unchanged. A blurred copy is passed to
    /// processAppWallpaper(), which may read and change it, and which writes it to a file in the
    /// output directory. The name of the file is made from `sourcePath`, so each source has one
    /// wallpaper, which it overwrites. From then on, appImagePath() gives the path of the file.
    ///
    /// If there is no picture, or not enough memory for one, processAppWallpaper() gets a null
    /// image.
    static void buildBackgroundImageForPortrait(
        VelmoorZerlinBackground* background, const QImage& image, QString sourcePath,
        const QImage& applicationImage, const QRectF& rect);

    /// The last step of a build, called with the blurred wallpaper: writes it to appImagePath() as
    /// a JPEG. A reader sees the old file or the new one, never a part. An override must call this
    /// at its end. False, with one warning, if the file could not be written; the old file stays
    /// then.
    virtual bool processAppWallpaper(QImage* image);

    /// The path of the last build's application wallpaper. Empty before the first build.
    QString appImagePath() const;

private:
    void build(const QImage& picture, const QRectF& rect);

    const QString m_outputPath;
    QString m_appImagePath;
    double m_pixelRatio = 1;
    int m_rounds = 15;
    int m_radius = 4;
    double m_sigma = 1.3;
};
