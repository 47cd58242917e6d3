// SPDX-License-Identifier: BSD-3-Clause
#include "colorlookup.h"

#include <QTest>

#include <cmath>

namespace {

QVector<QColor> bluePalette()
{
    return {
        QColor::fromHsv(210, 127, 255), QColor::fromHsv(240, 102, 255),
        QColor::fromHsv(270, 127, 255)};
}

/// The relative luminance that WCAG 2 defines.
double luminance(const QColor& color)
{
    const auto linear = [](qreal channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// The contrast ratio that WCAG 2 defines.
double contrastToBlack(const QColor& color)
{
    return (luminance(color) + 0.05) / 0.05;
}

} // namespace

class ColorLookupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyHueCanBeReadOnBlack();
    void onlyDarkHuesAreRemapped();
    void coloursWithinThePaletteBecomeItsNearest_data();
    void coloursWithinThePaletteBecomeItsNearest();
    void greysStayAsTheyAre();
    void thePalettesOrderDoesNotMatter();
    void anEmptyPaletteChangesNothing();
};

void ColorLookupTest::everyHueCanBeReadOnBlack()
{
    const ColorLookup lookup(bluePalette());
    double least = 21;
    for (int hue = 0; hue < 360; ++hue) {
        least = std::min(least, contrastToBlack(lookup.remap(QColor::fromHsv(hue, 128, 255))));
    }

    QVERIFY2(least >= 7.75, qPrintable(QString::number(least)));
}

void ColorLookupTest::onlyDarkHuesAreRemapped()
{
    const ColorLookup lookup(bluePalette());
    for (int hue = 0; hue < 360; ++hue) {
        const QColor color = QColor::fromHsv(hue, 128, 255);
        const bool isRemapped = lookup.remap(color) != color;

        QCOMPARE(isRemapped, hue >= 210 && hue <= 270);
        QVERIFY(isRemapped || contrastToBlack(color) >= 7);
    }
}

void ColorLookupTest::coloursWithinThePaletteBecomeItsNearest_data()
{
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("index");

    QTest::newRow("the lowest") << 210 << 0;
    QTest::newRow("halfway, so the first") << 225 << 0;
    QTest::newRow("nearer to the second") << 226 << 1;
    QTest::newRow("the second") << 240 << 1;
    QTest::newRow("halfway up, so the second") << 255 << 1;
    QTest::newRow("nearer to the third") << 256 << 2;
    QTest::newRow("the highest") << 270 << 2;
}

void ColorLookupTest::coloursWithinThePaletteBecomeItsNearest()
{
    QFETCH(int, hue);
    QFETCH(int, index);

    const QColor result = ColorLookup(bluePalette()).remap(QColor::fromHsv(hue, 128, 255));

    QCOMPARE(result, bluePalette().at(index));
}

void ColorLookupTest::greysStayAsTheyAre()
{
    const QColor grey(120, 120, 120);

    QCOMPARE(ColorLookup(bluePalette()).remap(grey), grey);
}

void ColorLookupTest::thePalettesOrderDoesNotMatter()
{
    QVector<QColor> palette = bluePalette();
    std::swap(palette[0], palette[1]);

    const QColor result = ColorLookup(palette).remap(QColor::fromHsv(265, 128, 255));

    QCOMPARE(result, bluePalette().at(2));
}

void ColorLookupTest::anEmptyPaletteChangesNothing()
{
    const QColor blue = QColor::fromHsv(240, 128, 255);

    QCOMPARE(ColorLookup({}).remap(blue), blue);
}

QTEST_GUILESS_MAIN(ColorLookupTest)
#include "tst_colorlookup.moc"
