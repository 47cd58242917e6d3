// SPDX-License-Identifier: BSD-3-Clause
#include "theme/backgroundpicture.h"

#include "encodedpicture.h"
#include "hostilepicture.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "testfolder.h"

#include <QFile>
#include <QImageReader>
#include <QTest>

namespace {

const QSize Screen(54, 96);

QByteArray content(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(file.errorString()), __FILE__, __LINE__);
    }
    return file.readAll();
}

QByteArray sample(const char* name)
{
    return content(QStringLiteral(SAMPLE_PICTURES "/") + QLatin1String(name));
}

QImage quadrantPictureOf(QImage::Format format)
{
    return quadrantPicture(QSize(160, 160)).convertToFormat(format);
}

QByteArray vectorPicture()
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\">"
           "<text x=\"1\" y=\"9\">a</text></svg>";
}

/// The same, compressed.
QByteArray compressedVectorPicture()
{
    return QByteArray::fromBase64(
        "H4sIAAAAAAACAx2LWwqAIBAAr7LsAdrNvgr1LkGiQi9yae32ZX/DMGPLHaFu614cJpFzIlLVTofuuCIZZqavQNC8"
        "SHJoGCGFHJP87K2EKlAd9giPwxH9bKk5b9vnX6CIpydfAAAA");
}

} // namespace

/// Tests which files are pictures, and how the others are handled.
class BackgroundPictureFormatsTest : public QObject
{
    Q_OBJECT

private:
    TestFolder m_folder;

    QString write(const QByteArray& bytes)
    {
        // The content decides the format, and the name is wrong.
        const QString name = QStringLiteral("picture.png");
        m_folder.write(name, bytes);
        return m_folder.path(name);
    }

private Q_SLOTS:
    void pictureOfAnyKindShowsItsColours_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QImage picture = quadrantPictureOf(QImage::Format_RGB32);
        QTest::newRow("JPEG") << encodedPicture(picture, "jpeg");
        QTest::newRow("progressive JPEG") << encodedPicture(picture, "jpeg", true);
        QTest::newRow("CMYK JPEG") << sample("quadrants-cmyk.jpg");
        QTest::newRow("PNG") << encodedPicture(picture, "png");
        QTest::newRow("PNG of 16 bits")
            << encodedPicture(quadrantPictureOf(QImage::Format_RGBX64), "png");
        QTest::newRow("PNG of 16 bits, with alpha")
            << encodedPicture(quadrantPictureOf(QImage::Format_RGBA64), "png");
        QTest::newRow("PNG with a palette")
            << encodedPicture(quadrantPictureOf(QImage::Format_Indexed8), "png");
        QTest::newRow("WebP") << encodedPicture(picture, "webp");
        QTest::newRow("TIFF") << encodedPicture(picture, "tiff");
        QTest::newRow("GIF") << sample("quadrants.gif");
        QTest::newRow("BMP") << encodedPicture(picture, "bmp");
        QTest::newRow("BMP, from top to bottom") << topDownBmp(picture);
        QTest::newRow("PPM") << encodedPicture(picture, "ppm");
    }

    void pictureOfAnyKindShowsItsColours()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;
        const QString path = write(bytes);

        const QImage image = loadBackgroundImage(path, Screen);

        QCOMPARE(image.size(), QSize(96, 96));
        QCOMPARE(quadrants(image), QStringLiteral("RGWB"));
        QCOMPARE(quadrants(loadWholeImage(path)), QStringLiteral("RGWB"));
    }

    void kindsOfThisTestAreWhatTheirNamesSay()
    {
        const QImage picture = quadrantPictureOf(QImage::Format_RGB32);
        QVERIFY(encodedPicture(picture, "jpeg", true).contains("\xff\xc2"));
        QVERIFY(!encodedPicture(picture, "jpeg").contains("\xff\xc2"));
        constexpr int depth = 24;
        constexpr int kind = 25;
        const QByteArray deep = encodedPicture(quadrantPictureOf(QImage::Format_RGBX64), "png");
        QCOMPARE(int(deep.at(depth)), 16);
        const QByteArray indexed =
            encodedPicture(quadrantPictureOf(QImage::Format_Indexed8), "png");
        QCOMPARE(int(indexed.at(kind)), 3);
    }

    void greyPictureStaysGrey_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("JPEG") << QByteArrayLiteral("jpeg");
        QTest::newRow("PNG") << QByteArrayLiteral("png");
    }

    void greyPictureStaysGrey()
    {
        QFETCH(QByteArray, format);
        const MessageLog log;
        QImage grey(100, 60, QImage::Format_Grayscale8);
        grey.fill(QColor(120, 120, 120));
        const QString path = write(encodedPicture(grey, format.constData()));

        const QImage image = loadBackgroundImage(path, Screen);

        QCOMPARE(image.size(), QSize(96, 96));
        QCOMPARE(image.pixelColor(48, 48), QColor(120, 120, 120));
    }

    void photoOfTwelveMegapixelsIsCutAndScaled()
    {
        const MessageLog log;
        QImage photo(4000, 3000, QImage::Format_RGB32);
        photo.fill(Qt::black);
        // The colours are in the square in the middle. Outside, the picture would be black.
        const QImage middle = quadrantPicture(QSize(3000, 3000));
        for (int y = 0; y < middle.height(); ++y) {
            const auto* const row = reinterpret_cast<const QRgb*>(middle.constScanLine(y));
            std::copy_n(row, middle.width(), reinterpret_cast<QRgb*>(photo.scanLine(y)) + 500);
        }
        const QString path = write(encodedPicture(photo, "jpeg"));

        const QImage image = loadBackgroundImage(path, QSize(540, 960));

        QCOMPARE(image.size(), QSize(960, 960));
        QCOMPARE(quadrants(image), QStringLiteral("RGWB"));
        QCOMPARE(qRed(image.pixel(4, 4)) > 200, true);
        QCOMPARE(qBlue(image.pixel(4, 955)) > 200, true);
        QCOMPARE(qGreen(image.pixel(955, 4)) > 200, true);
    }

    void fileThatIsNoPictureGivesNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArrayLiteral("no picture");
        QTest::newRow("the start of a PNG") << QByteArrayLiteral("\x89PNG\r\n\x1a\n");
        QTest::newRow("half a PNG")
            << encodedPicture(noisePicture(QSize(40, 40)), "png").left(1000);
        QTest::newRow("half a WebP")
            << encodedPicture(noisePicture(QSize(40, 40)), "webp").left(100);
        QTest::newRow("XPM") << encodedPicture(quadrantPictureOf(QImage::Format_RGB32), "xpm");
        QTest::newRow("animation without an end") << endlessAnimation();
        QTest::newRow("vector picture") << vectorPicture();
        QTest::newRow("compressed vector picture") << compressedVectorPicture();
    }

    void fileThatIsNoPictureGivesNone()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;
        const QString path = write(bytes);

        QVERIFY(loadBackgroundImage(path, Screen).isNull());
        QVERIFY(loadLegacyBackgroundImage(path, Screen).isNull());
        QVERIFY(loadWholeImage(path).isNull());
    }

    void picturesOfOtherFormatsWouldElseBeDecoded()
    {
        // If their plugins were not installed, the refusals above would prove nothing.
        QCOMPARE(QImageReader(write(endlessAnimation())).format(), QByteArrayLiteral("mng"));
        QCOMPARE(QImageReader(write(vectorPicture())).format(), QByteArrayLiteral("svg"));
        QCOMPARE(
            QImageReader(write(compressedVectorPicture())).format(), QByteArrayLiteral("svgz"));
    }

    void startOfAJpegGivesNone()
    {
        MessageLog log;
        const QString path = write(QByteArrayLiteral("\xff\xd8\xff\xe0"));

        QVERIFY(loadBackgroundImage(path, Screen).isNull());

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("Corrupt JPEG data: 1 extraneous bytes before marker 0xd9"),
                 QStringLiteral("JPEG datastream contains no image")}));
    }

    void jpegThatEndsEarlyShowsWhatItHas()
    {
        MessageLog log;
        const QByteArray whole = encodedPicture(quadrantPicture(QSize(400, 400)), "jpeg");
        const QString path = write(whole.left(whole.size() * 3 / 4));

        const QImage image = loadBackgroundImage(path, Screen);

        QCOMPARE(image.size(), QSize(96, 96));
        QCOMPARE(quadrants(image).left(2), QStringLiteral("RG"));
        QCOMPARE(
            log.takeMessages(),
            QStringList({QStringLiteral("Corrupt JPEG data: premature end of data segment")}));
    }

    void pathWithoutAFileGivesNone_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << m_folder.path(QStringLiteral("missing.png"));
        QTest::newRow("missing, with a namesake that has a suffix")
            << m_folder.path(QStringLiteral("namesake"));
        m_folder.makeFifo(QStringLiteral("fifo.png"));
        m_folder.makeLink(QStringLiteral("device.png"), QStringLiteral("/dev/zero"));
        QTest::newRow("FIFO") << m_folder.path(QStringLiteral("fifo.png"));
        QTest::newRow("link to a device") << m_folder.path(QStringLiteral("device.png"));
        QTest::newRow("folder") << m_folder.path();
        QTest::newRow("empty") << QString();
    }

    void pathWithoutAFileGivesNone()
    {
        QFETCH(QString, path);
        const MessageLog log;
        m_folder.write(
            QStringLiteral("namesake.png"),
            encodedPicture(quadrantPictureOf(QImage::Format_RGB32), "png"));

        QVERIFY(loadBackgroundImage(path, Screen).isNull());
        QVERIFY(loadLegacyBackgroundImage(path, Screen).isNull());
        QVERIFY(loadWholeImage(path).isNull());
    }
};

QTEST_GUILESS_MAIN(BackgroundPictureFormatsTest)

#include "tst_backgroundpictureformats.moc"
