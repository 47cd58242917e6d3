// SPDX-License-Identifier: BSD-3-Clause
#include "theme/systembackgroundimage.h"

#include "backgroundfixture.h"
#include "messagelog.h"
#include "notingbackgroundimage.h"
#include "paintedpicture.h"
#include "theme/backgroundpicture.h"

#include <QFileInfo>
#include <QTest>

namespace {

using Fixture = BackgroundFixture;

const QByteArray LegacyFile = "{'wallpaper': 'w.png'}";

QString message(const char* text, const QString& path)
{
    return buildSignature() + QLatin1Char(' ') + QLatin1String(text) + QStringLiteral(" \"") + path
        + QLatin1Char('"');
}

QString legacyMessage(const QString& path)
{
    return message("using legacy moodset image ", path);
}

QString cachedMessage(const QString& path)
{
    return message("using cached legacy moodset image from ", path);
}

} // namespace

/// Tests moodsets in the older, taller layout.
class LegacyMoodsetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NotingBackgroundImage::takeCalls(); }

    void firstBuildConvertsThePicture_data()
    {
        QTest::addColumn<bool>("wasValid");
        QTest::newRow("record is complete") << true;
        QTest::newRow("record is to be read") << false;
    }

    void firstBuildConvertsThePicture()
    {
        QFETCH(bool, wasValid);
        MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset(LegacyFile, 1);

        const Moodset built = Fixture::build(moodset, wasValid);

        QVERIFY(built);
        const QString home =
            Fixture::legacyDirectory() + Fixture::homeWallpaperName(moodset->url.toLocalFile());
        QCOMPARE(built->homeWallpaper, home);
        QCOMPARE(built->version, 1);
        const QImage cut = loadLegacyBackgroundImage(fixture.wallpaperPath(), Fixture::Screen);
        QCOMPARE(cut.size(), Fixture::Screen);
        QCOMPARE(pixelsOf(home), asJpeg(cut, 93));
        QCOMPARE(NotingBackgroundImage::lastBuild().image, cut);
        QCOMPARE(NotingBackgroundImage::lastBuild().sourcePath, home);
        QCOMPARE(QFileInfo(built->applicationWallpaper).path(), Fixture::outputDirectory());
        QCOMPARE(log.takeMessages(), QStringList({legacyMessage(fixture.wallpaperPath())}));
    }

    void secondBuildUsesTheConvertedPicture()
    {
        MessageLog log;
        Fixture fixture;
        const Moodset converted = Fixture::build(fixture.writeMoodset(LegacyFile, 1));
        QVERIFY(converted);
        fixture.folder.remove(QStringLiteral("images/w.png"));
        const QDateTime past = QDateTime::fromSecsSinceEpoch(1000000000);
        QFile home(converted->homeWallpaper);
        QVERIFY(home.open(QIODevice::ReadWrite));
        QVERIFY(home.setFileTime(past, QFileDevice::FileModificationTime));
        home.close();
        log.takeMessages();

        const Moodset built = Fixture::build(converted);

        QVERIFY(built);
        QCOMPARE(built->homeWallpaper, converted->homeWallpaper);
        QCOMPARE(QFileInfo(built->homeWallpaper).lastModified(), past);
        QCOMPARE(
            Fixture::filesIn(Fixture::legacyDirectory()),
            QStringList({QFileInfo(built->homeWallpaper).fileName()}));
        // This is the whole file, neither cut to a square nor scaled.
        QCOMPARE(
            pixelsOf(NotingBackgroundImage::lastBuild().image), pixelsOf(built->homeWallpaper));
        QCOMPARE(NotingBackgroundImage::lastBuild().sourcePath, built->url.toLocalFile());
        QCOMPARE(log.takeMessages(), QStringList({cachedMessage(built->homeWallpaper)}));
    }

    void convertedPictureThatIsGoneFailsUntilTheFileIsReadAgain()
    {
        MessageLog log;
        Fixture fixture;
        const Moodset converted = Fixture::build(fixture.writeMoodset(LegacyFile, 1));
        QVERIFY(converted);
        QVERIFY(QFile::remove(converted->homeWallpaper));
        log.takeMessages();

        QVERIFY(!Fixture::build(converted, true));
        QCOMPARE(log.takeMessages(), QStringList({cachedMessage(converted->homeWallpaper)}));
        QVERIFY(!QFileInfo::exists(converted->homeWallpaper));

        const Moodset rebuilt = Fixture::build(converted, false);
        QVERIFY(rebuilt);
        QVERIFY(QFileInfo::exists(rebuilt->homeWallpaper));
        QCOMPARE(log.takeMessages(), QStringList({legacyMessage(fixture.wallpaperPath())}));
    }

    void pictureOfTheOlderLayoutIsCachedByItsFolderAlone_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<int>("version");
        QTest::addColumn<bool>("isCached");
        QTest::newRow("cache") << Fixture::legacyDirectory() << 1 << true;
        QTest::newRow("cache, version 0") << Fixture::legacyDirectory() << 0 << true;
        QTest::newRow("name that begins like the cache's")
            << Fixture::legacyDirectory() + QStringLiteral("-other") << 1 << true;
        QTest::newRow("output folder") << Fixture::outputDirectory() << 1 << false;
        QTest::newRow("name of other case")
            << Fixture::outputDirectory() + QStringLiteral("/Legacy") << 1 << false;
    }

    void pictureOfTheOlderLayoutIsCachedByItsFolderAlone()
    {
        QFETCH(QString, folder);
        QFETCH(int, version);
        QFETCH(bool, isCached);
        MessageLog log;
        Fixture fixture;
        Moodset moodset = fixture.writeMoodset(LegacyFile, version);
        QVERIFY(QDir().mkpath(folder));
        moodset->homeWallpaper = folder + QStringLiteral("/w.png");
        QVERIFY(QFile::copy(fixture.wallpaperPath(), moodset->homeWallpaper));

        QVERIFY(Fixture::build(moodset));

        const QString path = moodset->homeWallpaper;
        QCOMPARE(
            log.takeMessages(),
            QStringList({isCached ? cachedMessage(path) : legacyMessage(path)}));
    }

    void pictureInTheCacheOfAPresentMoodsetIsCutToASquare()
    {
        const MessageLog log;
        Fixture fixture;
        Moodset moodset = fixture.writeMoodset(LegacyFile, 2);
        QVERIFY(QDir().mkpath(Fixture::legacyDirectory()));
        moodset->homeWallpaper = Fixture::legacyDirectory() + QStringLiteral("/w.png");
        QVERIFY(QFile::copy(fixture.wallpaperPath(), moodset->homeWallpaper));

        QVERIFY(Fixture::build(moodset));

        QCOMPARE(NotingBackgroundImage::lastBuild().image.size(), QSize(96, 96));
    }

    void folderThatCannotBeMadeIsLoggedAndGivesNone()
    {
        MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset(LegacyFile, 1);
        QVERIFY(QDir().mkpath(Fixture::outputDirectory()));
        QFile obstacle(Fixture::legacyDirectory());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));

        QVERIFY(!Fixture::build(moodset));

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {legacyMessage(fixture.wallpaperPath()),
                 QStringLiteral("Could not create legacy wallpaper directory \"%1\"")
                     .arg(Fixture::legacyDirectory())}));
        QCOMPARE(NotingBackgroundImage::takeCalls(), QStringList());
    }

    void pictureThatCannotBeReadStillMakesTheFolder()
    {
        MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset(LegacyFile, 1);
        fixture.folder.write(QStringLiteral("images/w.png"), "no picture");

        QVERIFY(!Fixture::build(moodset));

        QVERIFY(QFileInfo(Fixture::legacyDirectory()).isDir());
        QCOMPARE(Fixture::filesIn(Fixture::legacyDirectory()), QStringList());
        QCOMPARE(log.takeMessages(), QStringList({legacyMessage(fixture.wallpaperPath())}));
    }

    void convertedPictureThatCannotBeWrittenIsLogged()
    {
        MessageLog log;
        Fixture fixture;
        const Moodset moodset = fixture.writeMoodset(LegacyFile, 1);
        const QString home =
            Fixture::legacyDirectory() + Fixture::homeWallpaperName(moodset->url.toLocalFile());
        QVERIFY(QDir().mkpath(home));

        const Moodset built = Fixture::build(moodset);

        QVERIFY(built);
        QCOMPARE(built->homeWallpaper, home);
        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {legacyMessage(fixture.wallpaperPath()),
                 QStringLiteral("ERROR writing file: \"Cannot open device for writing: Filename "
                                "refers to a directory\"")}));
    }

    void plainPictureOfTheOlderLayoutIsCutAndDarkened()
    {
        MessageLog log;
        Fixture fixture;
        const QString path =
            fixture.writePicture(QStringLiteral("a.png"), noisePicture(QSize(54, 160)));
        Moodset moodset = Fixture::recordOf(path);
        moodset->version = 1;

        const Moodset built = Fixture::build(moodset);

        QVERIFY(built);
        QCOMPARE(
            built->homeWallpaper, Fixture::outputDirectory() + Fixture::homeWallpaperName(path));
        const QImage cut = loadLegacyBackgroundImage(path, Fixture::Screen);
        QCOMPARE(pixelsOf(built->homeWallpaper), asJpeg(darkened(cut), 93));
        QCOMPARE(NotingBackgroundImage::lastBuild().sourcePath, path);
        // It has the former home wallpaper of the record, which is empty.
        QCOMPARE(
            log.takeMessages(),
            QStringList({message("building legacy moodset background ", QString())}));
    }
};

QTEST_GUILESS_MAIN(LegacyMoodsetTest)

#include "tst_legacymoodset.moc"
