// SPDX-License-Identifier: BSD-3-Clause
#include "pictureformat.h"

#include "encodedpicture.h"
#include "hostilepicture.h"
#include "paintedpicture.h"

#include <QFile>
#include <QImage>
#include <QTest>

Q_DECLARE_METATYPE(PictureFormat)

namespace {

/// The head of an ISO media file with the brands, the first of which has a version.
QByteArray mediaHead(const QByteArrayList& brands)
{
    constexpr int boxHead = 8;
    constexpr int version = 4;
    const QByteArray content =
        brands.constFirst() + QByteArray(version, '\0') + QByteArrayList(brands.mid(1)).join();
    return QByteArray(3, '\0') + char(boxHead + content.size()) + "ftyp" + content;
}

QByteArray sample(const char* name)
{
    QFile file(QStringLiteral(SAMPLE_PICTURES "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class PictureFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void contentTellsTheFormat_data()
    {
        const QImage picture = quadrantPicture(QSize(20, 20));
        const QByteArray rest("the rest", 8);
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<PictureFormat>("format");
        QTest::newRow("JPEG") << encodedPicture(picture, "jpeg") << PictureFormat::Jpeg;
        QTest::newRow("PNG") << encodedPicture(picture, "png") << PictureFormat::Png;
        QTest::newRow("WebP") << encodedPicture(picture, "webp") << PictureFormat::WebP;
        QTest::newRow("TIFF") << encodedPicture(picture, "tiff") << PictureFormat::Tiff;
        QTest::newRow("TIFF, big-endian")
            << QByteArray("MM\0*\0\0\0\x08", 8) << PictureFormat::Tiff;
        QTest::newRow("large TIFF") << QByteArray("II+\0\x08\0\0\0", 8) << PictureFormat::Tiff;
        QTest::newRow("large TIFF, big-endian")
            << QByteArray("MM\0+\0\x08\0\0", 8) << PictureFormat::Tiff;
        QTest::newRow("GIF") << sample("quadrants.gif") << PictureFormat::Gif;
        QTest::newRow("GIF of 1987") << "GIF87a" + rest << PictureFormat::Gif;
        QTest::newRow("BMP") << encodedPicture(picture, "bmp") << PictureFormat::Bmp;
        for (const char kind : {'1', '2', '3', '4', '5', '6'}) {
            QTest::addRow("PNM %c", kind) << QByteArray("P") + kind + "\n2 1" << PictureFormat::Pnm;
        }
        QTest::newRow("HEIF") << mediaHead({"heic", "mif1", "heic"}) + rest << PictureFormat::Heif;
        QTest::newRow("HEIF, first of all its structure")
            << mediaHead({"mif1", "mif1", "heix"}) + rest << PictureFormat::Heif;
        QTest::newRow("HEIF, its structure alone")
            << mediaHead({"mif1", "miaf"}) + rest << PictureFormat::Heif;
        QTest::newRow("HEIF sequence") << mediaHead({"msf1", "hevc"}) + rest << PictureFormat::Heif;
        QTest::newRow("AVIF") << mediaHead({"avif", "mif1", "miaf"}) + rest << PictureFormat::Avif;
        QTest::newRow("AVIF, first of all its structure")
            << mediaHead({"mif1", "avif"}) + rest << PictureFormat::Avif;
        QTest::newRow("AVIF sequence") << mediaHead({"avis", "msf1"}) + rest << PictureFormat::Avif;
        QTest::newRow("the first of two formats")
            << mediaHead({"heic", "avif"}) + rest << PictureFormat::Heif;
    }

    void contentTellsTheFormat()
    {
        QFETCH(QByteArray, start);
        QFETCH(PictureFormat, format);

        QCOMPARE(pictureFormat(start), format);
        QCOMPARE(pictureFormat(start.left(PictureSignatureSize)), format);
    }

    void otherContentIsOfNone_data()
    {
        addUnlistedFormats();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArrayLiteral("no picture");
        QTest::newRow("zeros") << QByteArray(100, '\0');
        QTest::newRow("MNG") << endlessAnimation();
        QTest::newRow("nested SVG") << nestedVectorPicture();
        QTest::newRow("JPEG without a marker") << QByteArrayLiteral("\xff\xd8 and text");
        QTest::newRow("half a signature of PNG") << QByteArrayLiteral("\x89PNG");
        QTest::newRow("sound in the container of WebP") << QByteArray("RIFF\0\0\0\0WAVEfmt ", 16);
        QTest::newRow("PAM") << QByteArrayLiteral("P7\nWIDTH 1");
        QTest::newRow("PNM without a blank") << QByteArrayLiteral("P65 32");
        QTest::newRow("PNM that ends") << QByteArrayLiteral("P6");
        QTest::newRow("film") << mediaHead({"isom", "mp42", "avc1"});
        QTest::newRow("brand after the end of the head")
            << mediaHead({"isom", "mp42"}) + QByteArrayLiteral("heicavif");
        QTest::newRow("media file that ends") << QByteArray(
            "\0\0\0\x20"
            "ftyphe",
            10);
        QTest::newRow("JPEG XL") << QByteArray("\0\0\0\x0cJXL \r\n\x87\n", 12);
    }

    void otherContentIsOfNone()
    {
        QFETCH(QByteArray, bytes);

        QCOMPARE(pictureFormat(bytes), PictureFormat::Unknown);
    }

    void formatsHaveADecoderAndNoOtherHas()
    {
        QCOMPARE(decoderName(PictureFormat::Unknown), QByteArray());
        QCOMPARE(decoderName(PictureFormat::Jpeg), QByteArrayLiteral("jpeg"));
        QCOMPARE(decoderName(PictureFormat::Png), QByteArrayLiteral("png"));
        QCOMPARE(decoderName(PictureFormat::WebP), QByteArrayLiteral("webp"));
        QCOMPARE(decoderName(PictureFormat::Tiff), QByteArrayLiteral("tiff"));
        QCOMPARE(decoderName(PictureFormat::Gif), QByteArrayLiteral("gif"));
        QCOMPARE(decoderName(PictureFormat::Bmp), QByteArrayLiteral("bmp"));
        QCOMPARE(decoderName(PictureFormat::Pnm), QByteArrayLiteral("ppm"));
        QCOMPARE(decoderName(PictureFormat::Heif), QByteArrayLiteral("heif"));
        QCOMPARE(decoderName(PictureFormat::Avif), QByteArrayLiteral("avif"));
    }
};

QTEST_APPLESS_MAIN(PictureFormatTest)

#include "tst_pictureformat.moc"
