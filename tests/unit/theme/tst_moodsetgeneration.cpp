// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"
#include "moodsetlibrary.h"
#include "storetrace.h"
#include "themefixture.h"

#include <QFile>
#include <QTest>

namespace {

const QString LookColumns =
    QStringLiteral("highlightColor, secondaryHighlightColor, primaryColor, secondaryColor, "
                   "ringerVolume, enabledSounds, favorite, partnerSpace, version");

} // namespace

/// Tests how requests for local files find or make their moodsets.
class MoodsetGenerationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureBecomesAMoodset()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();

        fixture.create(path);

        const QStringList row = fixture.moodsetRow(path, LookColumns);
        QCOMPARE(
            row.mid(2),
            QStringList(
                {QStringLiteral("#ffffffff"), QStringLiteral("#b0ffffff"), QStringLiteral("80"),
                 QStringLiteral("-1"), QStringLiteral("0"), QString(), QStringLiteral("2")}));
        QVERIFY(QColor::isValidColor(row.at(0)));
        QCOMPARE(row.at(1), QColor(row.at(0)).darker(125).name(QColor::HexArgb));
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(path))});
        QCOMPARE(
            fixture.library
                .value(
                    QStringLiteral("SELECT count(*) FROM resource WHERE fileId = ?"),
                    {fixture.fileId(path)})
                .toInt(),
            0);
    }

    void createdMoodsetLeavesTheSystemAlone_data()
    {
        QTest::addColumn<bool>("isPicture");
        QTest::newRow("picture") << true;
        QTest::newRow("moodset file") << false;
    }

    void createdMoodsetLeavesTheSystemAlone()
    {
        QFETCH(bool, isPicture);
        MessageLog log;
        ThemeFixture fixture;
        const QByteArray moodset = R"({"wallpaper": "w.png", "version": 2, "ringerVolume": 5,)"
                                   R"("ringerToneFile": {"file": "r.ogg"}})";
        const QString path = isPicture ? fixture.addPicture() : fixture.addMoodset(moodset);

        fixture.create(path);

        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(path))});
        QVERIFY(QFile::exists(ThemeFixture::wallpaper(path, QStringLiteral("ap.jpg"))));
    }

    void unknownMoodsetFileIsReadAndStored()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addMoodset(
            R"({"wallpaper": "w.png", "version": 2, "displayName": "Name", "favorite": true,)"
            R"("highlightColor": "#010203", "secondaryHighlightColor": "#040506",)"
            R"("primaryColor": "#070809", "secondaryColor": "#0a0b0c", "ringerVolume": 30,)"
            R"("mailToneFile": {"enabled": 0}})");

        fixture.set(path);

        QCOMPARE(
            fixture.moodsetRow(path, LookColumns),
            QStringList(
                {QStringLiteral("#ff010203"), QStringLiteral("#ff040506"),
                 QStringLiteral("#ff070809"), QStringLiteral("#ff0a0b0c"), QStringLiteral("30"),
                 QStringLiteral("-5"), QStringLiteral("1"), QString(), QStringLiteral("2")}));
        QCOMPARE(
            fixture.library.value(
                QStringLiteral("SELECT displayName FROM file WHERE id = ?"),
                {fixture.fileId(path)}),
            QVariant(QStringLiteral("Name")));
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(path))});
    }

    void moodsetFileWithoutColoursGetsSome()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path =
            fixture.addMoodset(R"({"wallpaper": "w.png", "primaryColor": "red", "version": 2})");

        fixture.set(path);

        const QStringList row = fixture.moodsetRow(path, LookColumns);
        QVERIFY(QColor::isValidColor(row.value(0)));
        QCOMPARE(row.value(2), QStringLiteral("#ffff0000"));
        QCOMPARE(row.value(3), QStringLiteral("#b0ffffff"));
    }

    void knownMoodsetIsNotReadAgain()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path =
            fixture.addMoodset(R"({"wallpaper": "w.png", "highlightColor": "red", "version": 2})");
        fixture.set(path);
        QVERIFY(ThemeFixture::moodsets().save(
            fixture.fileId(path), {{QStringLiteral("highlightColor"), QStringLiteral("#112233")}}));
        fixture.folder.write(QStringLiteral("a.moodset"), "broken");

        fixture.set(path);

        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("highlightColor")),
            QStringList(QStringLiteral("#ff112233")));
        QCOMPARE(fixture.takeCreated().size(), 2);
    }

    void editsOfAPictureSurviveItsNextRequest()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.create(path);
        QVERIFY(ThemeFixture::moodsets().save(
            fixture.fileId(path),
            {{QStringLiteral("favorite"), true},
             {QStringLiteral("ringerVolume"), 7},
             {QStringLiteral("primaryColor"), QStringLiteral("#010203")},
             {QStringLiteral("ringerToneEnabled"), false}}));
        const QStringList edited = fixture.moodsetRow(path, QStringLiteral("favorite, timestamp"));

        fixture.set(path);

        QCOMPARE(fixture.moodsetRow(path, QStringLiteral("favorite, timestamp")), edited);
        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("primaryColor, ringerVolume, enabledSounds")),
            QStringList({QStringLiteral("#ff010203"), QStringLiteral("7"), QStringLiteral("-2")}));
        QCOMPARE(
            ThemeFixture::takeProfileValues(),
            QStringList(
                {QStringLiteral("general/ringing.alert.volume='7'"),
                 QStringLiteral("active='general'"),
                 QStringLiteral("general/ringing.alert.enabled='Off'")}));
    }

    void repeatedRequestOverwritesItsWallpapers()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        const QString home = ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg"));
        fixture.set(path);
        QVERIFY(QFile::resize(home, 0));

        fixture.set(path);

        QVERIFY(QFileInfo(home).size() > 0);
        QCOMPARE(fixture.moodsetRow(path, QStringLiteral("homeWallpaper")), QStringList(home));
    }

    void badRequest_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("isKnown");
        const auto row = [](const char* tag, const char* name, const QByteArray& content) {
            QTest::newRow(tag) << QString::fromLatin1(name) << content << true;
        };
        row("text as a picture", "bad.jpg", "no picture");
        row("empty picture", "bad.jpg", "");
        row("truncated picture", "bad.bmp", "BM");
        row("drawing with text", "bad.svg",
            "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><text y='9'>a</text>"
            "</svg>");
        row("drawing that calls itself a picture", "bad.jpg",
            "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><text y='9'>a</text>"
            "</svg>");
        row("moodset that is no JSON", "bad.moodset", "{");
        row("moodset without a wallpaper", "bad.moodset", "{\"version\": 2}");
        row("moodset whose wallpaper is missing", "bad.moodset",
            R"({"version": 2, "wallpaper": "none.png"})");
        row("moodset in a name of capitals", "bad.MOODSET",
            R"({"version": 2, "wallpaper": "w.png"})");
        QTest::newRow("missing file") << QStringLiteral("none.jpg") << QByteArray() << false;
        QTest::newRow("missing moodset") << QStringLiteral("none.moodset") << QByteArray() << false;
    }

    /// A bad file keeps its row, so that it has an id, but gets no moodset.
    void badRequestLeavesTheThemeAsItWas_data() { badRequest_data(); }
    void badRequestLeavesTheThemeAsItWas()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, isKnown);
        MessageLog log;
        ThemeFixture fixture;
        fixture.set(fixture.addPicture());
        const QString path = fixture.folder.path(name);
        if (isKnown) {
            fixture.folder.write(name, content);
        }
        StoreTrace::take();
        fixture.takeCreated();
        log.takeMessages();

        fixture.set(path);

        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
        QCOMPARE(log.takeMessages(), QStringList());
        QCOMPARE(fixture.fileId(path) != 0, isKnown);
        QCOMPARE(fixture.moodsetRow(path, QStringLiteral("version")), QStringList());
    }

    void pictureThatIsGoneCannotComeIntoForceAgain()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.create(path);
        fixture.takeCreated();
        QVERIFY(QFile::remove(path));

        fixture.set(path);

        QCOMPARE(StoreTrace::take(), QStringList());
        QCOMPARE(fixture.takeCreated(), QList<int>());
        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("version")), QStringList(QStringLiteral("2")));
    }

    void failedRequestIsStillTheOneToComeIntoForce()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.folder.path(QStringLiteral("later.png"));
        fixture.set(path);

        const QString other = fixture.addPicture(QStringLiteral("other.png"));
        fixture.create(other);
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(other))});
        QCOMPARE(StoreTrace::take(), QStringList());
        fixture.create(fixture.addPicture(QStringLiteral("later.png")));

        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOf(path) + ThemeFixture::partnerSpaceKeys());
    }

    void createdMoodsetOfTheLastSetUrlComesIntoForceAgain()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.set(path);
        StoreTrace::take();

        fixture.create(path);

        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOf(path) + ThemeFixture::partnerSpaceKeys());
    }

    void createdMoodsetOfAnEarlierSetUrlDoesNot()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.set(path);
        fixture.set(fixture.addPicture(QStringLiteral("b.png")));
        fixture.takeCreated();
        StoreTrace::take();

        fixture.create(path);

        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(path))});
        QCOMPARE(StoreTrace::take(), QStringList());
    }

    void pathWithSpecialCharactersComesIntoForce()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture(QString::fromUtf8("100% ä#b?%1.png"));

        fixture.set(path);

        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOf(path) + ThemeFixture::partnerSpaceKeys());
        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("homeWallpaper")),
            QStringList(ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg"))));
    }
};

QTEST_GUILESS_MAIN(MoodsetGenerationTest)

#include "tst_moodsetgeneration.moc"
