// SPDX-License-Identifier: BSD-3-Clause
#include "theme/decodableimage.h"

#include "exifbuilder.h"
#include "messagelog.h"
#include "paintedpicture.h"

#include <QBuffer>
#include <QImageReader>
#include <QtTest>

namespace {

QByteArray vectorPicture(const QByteArray& content)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\">" + content
        + "</svg>";
}

} // namespace

class DecodableImageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void picturesAreDecodable()
    {
        const MessageLog log;
        QBuffer buffer;
        buffer.setData(pngWithExif(QByteArray()));
        const QImageReader reader(&buffer);

        QVERIFY(isDecodable(reader));
    }

    void vectorPicturesAreNot_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("with a text") << vectorPicture("<text x=\"1\" y=\"9\">a</text>");
        QTest::newRow("without one") << vectorPicture("<rect width=\"9\" height=\"9\"/>");
        QTest::newRow("with an XML declaration")
            << "<?xml version=\"1.0\"?>\n" + vectorPicture("<text>a</text>");
        QTest::newRow("with blanks in front") << "\n  " + vectorPicture("<text>a</text>");
        QTest::newRow("with a document type") << "<!DOCTYPE svg>" + vectorPicture("<text>a</text>");
        QTest::newRow("with a comment in front") << "<!-- a -->" + vectorPicture("<text>a</text>");
    }

    void vectorPicturesAreNot()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;
        QBuffer buffer;
        buffer.setData(bytes);
        const QImageReader reader(&buffer);

        // What is not told to be one is no picture at all.
        QVERIFY(!isDecodable(reader) || reader.format().isEmpty());
        QVERIFY(imageFromData(bytes).isNull());
    }

    void dataWithoutAPictureGivesNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("null") << QByteArray();
        QTest::newRow("text") << QByteArrayLiteral("<html>no picture</html>");
        QTest::newRow("the start of a PNG") << pngWithExif(QByteArray()).left(50);
    }

    void dataWithoutAPictureGivesNone()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;

        QVERIFY(imageFromData(bytes).isNull());
    }

    void dataOfAPictureGivesItAsItIsStored()
    {
        const MessageLog log;
        const QImage picture = coordinatePicture(QSize(20, 30));

        const QImage image = imageFromData(pngWithExif(picture, exifBlock({}, 6)));

        QCOMPARE(image.convertToFormat(QImage::Format_RGB32), picture);
    }

    void dataOfAJpegGivesAPicture()
    {
        const MessageLog log;

        const QImage image =
            imageFromData(jpegWithExif(quadrantPicture(QSize(64, 64)), QByteArray()));

        QCOMPARE(image.size(), QSize(64, 64));
        QCOMPARE(quadrants(image), QStringLiteral("RGWB"));
    }
};

QTEST_GUILESS_MAIN(DecodableImageTest)

#include "tst_decodableimage.moc"
