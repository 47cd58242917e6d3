// SPDX-License-Identifier: BSD-3-Clause
#include "backgroundfixture.h"

#include "dconfcommand.h"
#include "exifbuilder.h"
#include "notingbackgroundimage.h"
#include "paintedpicture.h"
#include "themekeys.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QTest>

BackgroundFixture::BackgroundFixture()
{
    QDir(outputDirectory()).removeRecursively();
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
    folder.makeDirectory(QStringLiteral("images"));
}

QString BackgroundFixture::writePicture(const QString& name, const QImage& picture)
{
    folder.write(name, pngWithExif(picture, QByteArray()));
    return folder.path(name);
}

Moodset BackgroundFixture::writeMoodset(const QByteArray& content, int version)
{
    m_wallpaper = version < 2 ? noisePicture(QSize(54, 160)) : quadrantPicture(QSize(160, 160));
    writePicture(QStringLiteral("images/w.png"), m_wallpaper);
    const QString name = QStringLiteral("a.moodset");
    folder.write(name, QByteArray(content).replace('\'', '"'));
    Moodset moodset = recordOf(folder.path(name));
    moodset->version = version;
    moodset->homeWallpaper = wallpaperPath();
    return moodset;
}

QString BackgroundFixture::wallpaperPath() const
{
    return folder.path(QStringLiteral("images/w.png"));
}

Moodset BackgroundFixture::recordOf(const QString& path)
{
    constexpr qint64 id = 7;
    return Moodset(new MoodsetData(id, QUrl::fromLocalFile(path)));
}

Moodset BackgroundFixture::build(const Moodset& moodset, bool wasValid)
{
    return NotingBackgroundImage().buildBackgroundImages(moodset, QImage(), Screen, Rect, wasValid);
}

QString BackgroundFixture::outputDirectory()
{
    return QString::fromLocal8Bit(qgetenv("XDG_CACHE_HOME")) + QLatin1Char('/')
        + QCoreApplication::applicationName() + QStringLiteral("/com/zavro/components/bgimages");
}

QString BackgroundFixture::legacyDirectory()
{
    return outputDirectory() + QStringLiteral("/legacy");
}

QString BackgroundFixture::homeWallpaperName(const QString& source)
{
    return QLatin1Char('/') + wallpaperName(source, QStringLiteral("hp.jpg"));
}

QStringList BackgroundFixture::filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QString buildSignature()
{
    return QStringLiteral("Moodset SystemBackgroundImage::buildBackgroundImages(const Moodset&, "
                          "const QImage&, const QSize&, const QRectF&, bool)");
}

QImage pixelsOf(const QString& path)
{
    return pixelsOf(QImage(path));
}

QImage pixelsOf(const QImage& image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

QImage asJpeg(const QImage& image, int quality)
{
    QBuffer buffer;
    if (!buffer.open(QIODevice::ReadWrite) || !image.save(&buffer, "jpeg", quality)) {
        QTest::qFail("Cannot write a JPEG picture", __FILE__, __LINE__);
    }
    return pixelsOf(QImage::fromData(buffer.data(), "jpeg"));
}

QImage darkened(const QImage& image)
{
    QImage copy = image;
    VelmoorZerlinBackground(BackgroundFixture::outputDirectory()).darken(&copy);
    return copy;
}
