// SPDX-License-Identifier: BSD-3-Clause
#include "theme/systembackgroundimage.h"

#include "backgroundfixture.h"
#include "dconfcommand.h"
#include "messagelog.h"
#include "notingbackgroundimage.h"
#include "paintedpicture.h"

#include <QTest>

namespace {

using Fixture = BackgroundFixture;

void writeKey(const char* name, const char* value)
{
    runDconf(
        {QStringLiteral("write"), QStringLiteral("/desktop/velmoor/zerlin/") + QLatin1String(name),
         QLatin1String(value)});
}

Moodset buildFor(const QSize& screen, Fixture* fixture)
{
    const QString path =
        fixture->writePicture(QStringLiteral("a.png"), quadrantPicture(QSize(20, 20)));
    return NotingBackgroundImage().buildBackgroundImages(
        Fixture::recordOf(path), QImage(), screen, Fixture::Rect, false);
}

/// A picture all of whose pixels have a hue of 120 degrees.
Moodset greenMoodset(Fixture* fixture)
{
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(QColor(0, 200, 0));
    return Fixture::recordOf(fixture->writePicture(QStringLiteral("green.png"), picture));
}

const QColor GreenHighlight = QColor::fromHsv(120, 128, 255);

} // namespace

/// Tests the parameters of the library, and the colours that it returns.
class BuildParametersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NotingBackgroundImage::takeCalls(); }

    void parametersWithoutKeysAreTheDefaults_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QString>("ratio");
        QTest::newRow("ratio 1") << QSize(540, 960) << QStringLiteral("ratio 1");
        QTest::newRow("ratio 2") << QSize(1080, 24) << QStringLiteral("ratio 2");
        QTest::newRow("ratio that is no whole number")
            << QSize(720, 24) << QStringLiteral("ratio 1.33333");
        QTest::newRow("the width counts") << QSize(54, 540) << QStringLiteral("ratio 0.1");
    }

    void parametersWithoutKeysAreTheDefaults()
    {
        QFETCH(QSize, screen);
        QFETCH(QString, ratio);
        const MessageLog log;
        Fixture fixture;

        QVERIFY(buildFor(screen, &fixture));

        QCOMPARE(
            NotingBackgroundImage::takeCalls(),
            QStringList(
                {ratio, QStringLiteral("rounds 15"), QStringLiteral("radius 4"),
                 QStringLiteral("sigma 1.3"), QStringLiteral("build")}));
    }

    void parametersComeFromTheKeys_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("call");
        const QByteArray ratio = "theme_pixel_ratio";
        const QByteArray rounds = "theme_bg_blur_rounds";
        const QByteArray radius = "theme_bg_blur_radius";
        const QByteArray sigma = "theme_bg_blur_sigma";
        QTest::newRow("ratio") << ratio << QByteArray("1.25") << 0 << QStringLiteral("ratio 1.25");
        QTest::newRow("ratio that is a whole number")
            << ratio << QByteArray("2") << 0 << QStringLiteral("ratio 2");
        QTest::newRow("ratio in single precision")
            << ratio << QByteArray("1.00000001") << 0 << QStringLiteral("ratio 1");
        QTest::newRow("rounds") << rounds << QByteArray("3") << 1 << QStringLiteral("rounds 3");
        QTest::newRow("no rounds") << rounds << QByteArray("0") << 1 << QStringLiteral("rounds 0");
        QTest::newRow("rounds that are no whole number")
            << rounds << QByteArray("3.0") << 1 << QStringLiteral("rounds 3");
        QTest::newRow("rounds as a text")
            << rounds << QByteArray("'7'") << 1 << QStringLiteral("rounds 7");
        QTest::newRow("rounds that are no number")
            << rounds << QByteArray("'many'") << 1 << QStringLiteral("rounds 0");
        QTest::newRow("radius") << radius << QByteArray("6") << 2 << QStringLiteral("radius 6");
        QTest::newRow("sigma") << sigma << QByteArray("2.5") << 3 << QStringLiteral("sigma 2.5");
        QTest::newRow("sigma that is a whole number")
            << sigma << QByteArray("2") << 3 << QStringLiteral("sigma 2");
    }

    void parametersComeFromTheKeys()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, value);
        QFETCH(int, position);
        QFETCH(QString, call);
        const MessageLog log;
        Fixture fixture;
        writeKey(key.constData(), value.constData());

        QVERIFY(buildFor(QSize(540, 24), &fixture));

        QStringList expected{
            QStringLiteral("ratio 1"), QStringLiteral("rounds 15"), QStringLiteral("radius 4"),
            QStringLiteral("sigma 1.3"), QStringLiteral("build")};
        expected[position] = call;
        QCOMPARE(NotingBackgroundImage::takeCalls(), expected);
    }

    void keysAreReadAtEachBuild()
    {
        const MessageLog log;
        Fixture fixture;
        QVERIFY(buildFor(QSize(540, 24), &fixture));
        NotingBackgroundImage::takeCalls();
        writeKey("theme_bg_blur_rounds", "5");

        QTRY_VERIFY(
            buildFor(QSize(540, 24), &fixture)
            && NotingBackgroundImage::takeCalls().contains(QStringLiteral("rounds 5")));
    }

    void libraryBlursWithTheParameters()
    {
        const MessageLog log;
        Fixture fixture;
        writeKey("theme_pixel_ratio", "2");
        writeKey("theme_bg_blur_rounds", "3");
        writeKey("theme_bg_blur_radius", "9");
        writeKey("theme_bg_blur_sigma", "2.5");

        const Moodset built = buildFor(Fixture::Screen, &fixture);

        QVERIFY(built);
        const NotingBackgroundImage::Build& build = NotingBackgroundImage::lastBuild();
        VelmoorZerlinBackground library(fixture.folder.path(QStringLiteral("library")));
        library.setPixelRatio(2);
        library.setBlurRounds(3);
        library.setBlurRadius(9);
        library.setBlurSigma(2.5);
        VelmoorZerlinBackground::buildBackgroundImageForPortrait(
            &library, build.image, build.sourcePath, build.applicationImage, build.rect);
        QCOMPARE(pixelsOf(built->applicationWallpaper), pixelsOf(library.appImagePath()));
    }

    void coloursThatAreMissingComeFromThePicture()
    {
        const MessageLog log;
        Fixture fixture;

        const Moodset built = Fixture::build(greenMoodset(&fixture));

        QCOMPARE(built->highlightColor.rgba(), GreenHighlight.rgba());
        QCOMPARE(built->secondaryHighlightColor.rgba(), GreenHighlight.darker(125).rgba());
        QCOMPARE(built->primaryColor, QColor(255, 255, 255, 255));
        QCOMPARE(built->secondaryColor, QColor(255, 255, 255, 176));
    }

    void coloursThatAreThereStay()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = greenMoodset(&fixture);
        moodset->highlightColor = QColor(1, 2, 3);
        moodset->secondaryHighlightColor = QColor(4, 5, 6);
        moodset->primaryColor = QColor(7, 8, 9, 10);
        moodset->secondaryColor = QColor(11, 12, 13);

        const Moodset built = Fixture::build(moodset);

        QCOMPARE(built->highlightColor, QColor(1, 2, 3));
        QCOMPARE(built->secondaryHighlightColor, QColor(4, 5, 6));
        QCOMPARE(built->primaryColor, QColor(7, 8, 9, 10));
        QCOMPARE(built->secondaryColor, QColor(11, 12, 13));
    }

    void secondHighlightIsMadeFromTheOwnHighlight()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = greenMoodset(&fixture);
        moodset->highlightColor = QColor(200, 100, 50);

        const Moodset built = Fixture::build(moodset);

        QCOMPARE(built->highlightColor, QColor(200, 100, 50));
        QCOMPARE(built->secondaryHighlightColor.rgba(), qRgb(160, 80, 40));
    }

    void secondHighlightThatIsThereDoesNotKeepTheFirstFromBeingMade()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = greenMoodset(&fixture);
        moodset->secondaryHighlightColor = QColor(4, 5, 6);

        const Moodset built = Fixture::build(moodset);

        QCOMPARE(built->highlightColor.rgba(), GreenHighlight.rgba());
        QCOMPARE(built->secondaryHighlightColor, QColor(4, 5, 6));
    }

    void coloursComeFromTheWallpaperAndNotFromTheDarkenedPicture()
    {
        const MessageLog log;
        Fixture fixture;
        // After darkening, it would be too dark to count, and the result would be the orange of a
        // grey picture.
        QImage picture(100, 100, QImage::Format_RGB32);
        picture.fill(QColor(0, 30, 0));
        const QString path = fixture.writePicture(QStringLiteral("dark.png"), picture);

        const Moodset built = Fixture::build(Fixture::recordOf(path));

        QCOMPARE(built->highlightColor.rgba(), GreenHighlight.rgba());
    }
};

QTEST_GUILESS_MAIN(BuildParametersTest)

#include "tst_buildparameters.moc"
