// SPDX-License-Identifier: BSD-3-Clause
#include "velmoorzerlinbackground.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

class DarkenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLevelIsDarkened();
    void copiesOfTheImageStayAsTheyAre();
    void everyFormatBecomesOpaque_data();
    void everyFormatBecomesOpaque();
    void blackShowsThroughTransparentPixels();
    void aNullImageStaysNull();

private:
    const QTemporaryDir m_folder;
    const VelmoorZerlinBackground m_background{m_folder.path()};
};

void DarkenTest::everyLevelIsDarkened()
{
    QImage image(256, 2, QImage::Format_RGB32);
    for (int level = 0; level < 256; ++level) {
        image.setPixel(level, 0, qRgb(level, 255 - level, 0));
        image.setPixel(level, 1, qRgb(0, 255, level));
    }

    m_background.darken(&image);

    const auto expected = [](int level) { return (148 * level + 128) >> 8; };
    for (int level = 0; level < 256; ++level) {
        QCOMPARE(image.pixel(level, 0), qRgb(expected(level), expected(255 - level), 0));
        QCOMPARE(image.pixel(level, 1), qRgb(0, 147, expected(level)));
    }
}

void DarkenTest::copiesOfTheImageStayAsTheyAre()
{
    QImage image(3, 3, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage copy = image;

    m_background.darken(&image);

    QCOMPARE(copy.pixel(1, 1), qRgb(255, 255, 255));
    QCOMPARE(image.pixel(1, 1), qRgb(147, 147, 147));
}

void DarkenTest::everyFormatBecomesOpaque_data()
{
    QTest::addColumn<QImage::Format>("format");

    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        if (format != QImage::Format_Alpha8) { // has no colours
            QTest::addRow("format %d", format) << QImage::Format(format);
        }
    }
}

void DarkenTest::everyFormatBecomesOpaque()
{
    QFETCH(QImage::Format, format);
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(Qt::white);
    image = image.convertToFormat(format);

    m_background.darken(&image);

    QImage expected(7, 5, QImage::Format_RGB32);
    expected.fill(qRgb(147, 147, 147));
    QCOMPARE(image, expected);
}

void DarkenTest::blackShowsThroughTransparentPixels()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 255, 255, 0));
    image.setPixel(1, 0, qRgba(255, 0, 255, 128));

    m_background.darken(&image);

    const int half = (148 * 128 + 128) >> 8;
    QCOMPARE(image.format(), QImage::Format_RGB32);
    QCOMPARE(image.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(image.pixel(1, 0), qRgb(half, 0, half));
}

void DarkenTest::aNullImageStaysNull()
{
    QImage image;

    m_background.darken(&image);

    QVERIFY(image.isNull());
}

QTEST_GUILESS_MAIN(DarkenTest)
#include "tst_darken.moc"
