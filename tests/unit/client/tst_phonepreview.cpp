// SPDX-License-Identifier: BSD-3-Clause
#include "applicationview.h"
#include "homescreen.h"
#include "phonepreview.h"
#include "screenpainter.h"

#include <QPainter>
#include <QTest>

namespace {

/// A theme with colours that nothing else in a preview has.
Theme colourfulTheme()
{
    Theme theme;
    theme.primary = QColor(Qt::cyan);
    theme.secondary = QColor(Qt::magenta);
    theme.highlight = QColor(Qt::yellow);
    theme.secondaryHighlight = QColor(0xff, 0x80, 0x00);
    return theme;
}

QImage filled(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

int pixelsOf(const QImage& image, const QColor& color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == color.rgb() ? 1 : 0;
        }
    }
    return count;
}

/// A point where both screens show only the wallpaper.
const QPoint FreePlace(270, 300);

const QPoint HomeCorner(80, 80);
const QPoint ApplicationCorner(724, 80);

} // namespace

class PhonePreviewTest : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts"); }

private:
    static QImage preview(const QString& name = QString())
    {
        const QSize size = ScreenPainter::ScreenSize;
        return phonePreview(
            colourfulTheme(), {filled(size, Qt::red), filled(size, Qt::green)}, name);
    }

private Q_SLOTS:
    void homeScreenHasAllColours_data()
    {
        const Theme theme = colourfulTheme();
        QTest::addColumn<QColor>("color");
        QTest::newRow("primary") << theme.primary;
        QTest::newRow("secondary") << theme.secondary;
        QTest::newRow("highlight") << theme.highlight;
        QTest::newRow("secondary highlight") << theme.secondaryHighlight;
    }

    void homeScreenHasAllColours()
    {
        QFETCH(QColor, color);
        QVERIFY(pixelsOf(homeScreen(colourfulTheme(), QImage()), color) > 0);
    }

    void applicationViewHasAllColours_data() { homeScreenHasAllColours_data(); }

    void applicationViewHasAllColours()
    {
        QFETCH(QColor, color);
        QVERIFY(pixelsOf(applicationView(colourfulTheme(), QImage()), color) > 0);
    }

    void eachPhoneHasItsWallpaper()
    {
        const QImage image = preview();

        QCOMPARE(image.size(), PhonePreviewSize);
        QCOMPARE(image.pixelColor(HomeCorner + FreePlace), QColor(Qt::red));
        // The toolkit dims it.
        const QColor dimmed = image.pixelColor(ApplicationCorner + QPoint(8, 400));
        QCOMPARE(dimmed.red(), 0);
        QCOMPARE(dimmed.blue(), 0);
        QVERIFY2(dimmed.green() > 60 && dimmed.green() < 160, qPrintable(dimmed.name()));
    }

    void cornersOfTheScreenAreRounded()
    {
        const QImage image = preview();

        QVERIFY(image.pixelColor(HomeCorner + QPoint(2, 2)) != QColor(Qt::red));
        QCOMPARE(image.pixelColor(HomeCorner + QPoint(2, 100)), QColor(Qt::red));
    }

    void squareWallpaperShowsItsMiddle()
    {
        QImage square = filled({960, 960}, Qt::black);
        QPainter(&square).fillRect(QRect(210, 0, 540, 960), Qt::red);

        const QImage screen = homeScreen(colourfulTheme(), square);

        QCOMPARE(screen.pixelColor(1, 300), QColor(Qt::red));
        QCOMPARE(screen.pixelColor(538, 300), QColor(Qt::red));
    }

    void smallWallpaperCoversTheScreen()
    {
        const QImage screen = homeScreen(colourfulTheme(), filled({3, 2}, Qt::red));

        for (const QPoint& place :
             {QPoint(0, 0), QPoint(539, 0), QPoint(0, 959), QPoint(539, 959)}) {
            QCOMPARE(screen.pixelColor(place), QColor(Qt::red));
        }
    }

    void badgeCanBeReadOnLightAndDarkHighlights()
    {
        Theme theme = colourfulTheme();
        const QImage wallpaper = filled(ScreenPainter::ScreenSize, Qt::gray);
        const QImage light = homeScreen(theme, wallpaper);
        theme.highlight = QColor(Qt::darkBlue);
        const QImage dark = homeScreen(theme, wallpaper);

        QVERIFY(pixelsOf(light, Qt::black) > 0);
        QCOMPARE(pixelsOf(light, Qt::white), 0);
        QVERIFY(pixelsOf(dark, Qt::white) > 0);
        QCOMPARE(pixelsOf(dark, Qt::black), 0);
    }

    void legendShowsNameAndColours()
    {
        const QRect legend(0, 1090, PhonePreviewSize.width(), 126);

        const QImage named = preview(QStringLiteral("Coast light")).copy(legend);

        QVERIFY(named != preview().copy(legend));
        const Theme theme = colourfulTheme();
        for (const QColor& color :
             {theme.primary, theme.secondary, theme.highlight, theme.secondaryHighlight}) {
            QVERIFY2(pixelsOf(named, color) > 50 * 50, qPrintable(color.name()));
        }
    }

    void longNameLeavesTheColoursFree()
    {
        const QRect colours(354, 1090, PhonePreviewSize.width() - 354, 126);

        const QString name(200, QLatin1Char('m'));

        QCOMPARE(preview(name).copy(colours), preview().copy(colours));
    }
};

QTEST_MAIN(PhonePreviewTest)

#include "tst_phonepreview.moc"
