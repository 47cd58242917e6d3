// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class QImage;
class QRectF;

/// A library that writes wallpapers as sharp and as bright as it gets them.
class VelmoorZerlinBackground
{
public:
    explicit VelmoorZerlinBackground(const QString& outputPath);
    virtual ~VelmoorZerlinBackground();
    Q_DISABLE_COPY_MOVE(VelmoorZerlinBackground)

    QString outputPath() const;
    void setPixelRatio(float ratio);
    void setBlurRounds(int rounds);
    void setBlurRadius(int radius);
    void setBlurSigma(double sigma);
    void darken(QImage* image) const;
    static void buildBackgroundImageForPortrait(
        VelmoorZerlinBackground* background, const QImage& image, QString sourcePath,
        const QImage& applicationImage, const QRectF& rect);
    virtual bool processAppWallpaper(QImage* image);
    QString appImagePath() const;

private:
    const QString m_outputPath;
};
