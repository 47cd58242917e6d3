// SPDX-License-Identifier: BSD-3-Clause
#include "theme/systemtheme.h"

#include "dconfcommand.h"
#include "messagelog.h"
#include "mgconfitem.h"
#include "moodset/tones.h"
#include "moodsetlibrary.h"
#include "storetrace.h"
#include "themefixture.h"
#include "themekeys.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <limits>

using ThemeKeys::written;

namespace {

/// The content of a moodset file with a volume.
QByteArray withVolume(int volume)
{
    return R"({"wallpaper": "w.png", "version": 2, "ringerVolume": )" + QByteArray::number(volume)
        + '}';
}

QString onValue(const QString& service, const char* key, const QString& value)
{
    return QStringLiteral("general/%1.alert.%2='%3'").arg(service, QLatin1String(key), value);
}

} // namespace

/// Tests what applying a moodset changes in the system.
class SystemThemeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeMoodsetIsWrittenInOrder()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addMoodset(
            R"({"wallpaper": "w.png", "version": 2, "highlightColor": "#010203",)"
            R"("secondaryHighlightColor": "#80040506", "primaryColor": "#070809",)"
            R"("secondaryColor": "#0A0B0C", "ringerVolume": 30,)"
            R"("ringerToneFile": {"file": "r.ogg"}, "chatToneFile": {"enabled": 0}})");

        fixture.set(path);

        const QString folder = fixture.folder.path();
        QCOMPARE(
            StoreTrace::take(),
            QStringList(
                {written(ThemeKeys::Picture, folder + QStringLiteral("/a.moodset")),
                 written(ThemeKeys::HomeWallpaper, folder + QStringLiteral("/images/w.png")),
                 written(
                     ThemeKeys::ApplicationWallpaper,
                     ThemeFixture::wallpaper(path, QStringLiteral("ap.jpg"))),
                 written(ThemeKeys::HighlightColor, QStringLiteral("#ff010203")),
                 written(ThemeKeys::SecondaryHighlightColor, QStringLiteral("#80040506")),
                 written(ThemeKeys::PrimaryColor, QStringLiteral("#ff070809")),
                 written(ThemeKeys::SecondaryColor, QStringLiteral("#ff0a0b0c")),
                 written(ThemeKeys::ActiveMoodset, folder + QStringLiteral("/a.moodset")),
                 QStringLiteral("sync"),
                 QStringLiteral("/com/zavro/profile/general/ringing.alert.volume='30'"),
                 QStringLiteral("/com/zavro/profile/active='general'"),
                 QStringLiteral("/com/zavro/profile/general/ringing.alert.tone='%1/sounds/r.ogg'")
                     .arg(folder),
                 QStringLiteral("/com/zavro/profile/general/ringing.alert.enabled='On'"),
                 QStringLiteral("/com/zavro/profile/general/im.alert.enabled='Off'"),
                 written(ThemeKeys::PartnerSpace, QString()), QStringLiteral("sync")}));
    }

    void otherProcessReadsTheKeys()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();

        fixture.set(path);

        for (const QString& key : ThemeKeys::ofMoodset(fixture.library, path, path)) {
            const int equals = key.indexOf(QLatin1Char('='));
            QCOMPARE(
                QString::fromUtf8(runDconf({QStringLiteral("read"), key.left(equals)})),
                key.mid(equals + 1));
        }
    }

    void pictureIsWrittenWithItsWallpapers()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();

        fixture.set(path);

        QCOMPARE(ThemeFixture::takeKeys(), fixture.keysOf(path) + ThemeFixture::partnerSpaceKeys());
        const QString home = ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg"));
        const QString application = ThemeFixture::wallpaper(path, QStringLiteral("ap.jpg"));
        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("homeWallpaper, applicationWallpaper")),
            QStringList({home, application}));
        const QSize square(ThemeFixture::ScreenHeight, ThemeFixture::ScreenHeight);
        QCOMPARE(QImage(home).size(), square);
        QCOMPARE(QImage(application).size(), square);
    }

    void pictureLeavesTheTonesAlone()
    {
        MessageLog log;
        ThemeFixture fixture;

        fixture.set(fixture.addPicture());

        QCOMPARE(
            ThemeFixture::takeProfileValues(),
            QStringList(
                {QStringLiteral("general/ringing.alert.volume='80'"),
                 QStringLiteral("active='general'")}));
    }

    void ringerVolume_data()
    {
        QTest::addColumn<int>("volume");
        QTest::addColumn<QStringList>("values");
        const auto heard = [](const char* volume, const char* profile) {
            return QStringList(
                {QStringLiteral("general/ringing.alert.volume='%1'").arg(QLatin1String(volume)),
                 QStringLiteral("active='%1'").arg(QLatin1String(profile))});
        };
        QTest::newRow("loudest") << 100 << heard("100", "general");
        QTest::newRow("above the range") << 101 << QStringList();
        QTest::newRow("largest number") << std::numeric_limits<int>::max() << QStringList();
        QTest::newRow("quietest") << 1 << heard("1", "general");
        QTest::newRow("silent") << 0 << heard("0", "silent");
        QTest::newRow("negative") << -1 << QStringList();
        QTest::newRow("smallest number") << std::numeric_limits<int>::min() << QStringList();
    }

    void ringerVolume()
    {
        QFETCH(int, volume);
        QFETCH(QStringList, values);
        MessageLog log;
        ThemeFixture fixture;

        fixture.set(fixture.addMoodset(withVolume(volume)));

        QCOMPARE(ThemeFixture::takeProfileValues(), values);
    }

    void volumeOutOfRangeKeepsTheSilentProfile()
    {
        MessageLog log;
        ThemeFixture fixture;
        fixture.set(fixture.addMoodset(withVolume(0)));

        fixture.set(fixture.addMoodset(withVolume(-1), QStringLiteral("b.moodset")));

        MGConfItem::sync();
        QCOMPARE(
            runDconf({QStringLiteral("read"), QStringLiteral("/com/zavro/profile/active")}),
            QByteArray("'silent'"));
    }

    void tone_data()
    {
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("service");
        const QStringList services{QStringLiteral("ringing"), QStringLiteral("sms"),
                                   QStringLiteral("email"),   QStringLiteral("voip"),
                                   QStringLiteral("im"),      QStringLiteral("calendar"),
                                   QStringLiteral("clock")};
        for (int bit = 0; bit < services.size(); ++bit) {
            const QString name = Tones::names().at(bit);
            QTest::newRow(qPrintable(name)) << bit << Tones::fileKey(name) << services.at(bit);
        }
    }

    void toneWithAFileIsEnabled_data() { tone_data(); }
    void toneWithAFileIsEnabled()
    {
        QFETCH(int, bit);
        QFETCH(QString, key);
        QFETCH(QString, service);
        Q_UNUSED(bit)
        const QVariantMap tone{
            {QStringLiteral("url"), QUrl(QStringLiteral("file:///sounds/a%20b.ogg"))}};

        QCOMPARE(
            tonesOf({{key, tone}}, -1),
            QStringList(
                {onValue(service, "tone", QStringLiteral("/sounds/a b.ogg")),
                 onValue(service, "enabled", QStringLiteral("On"))}));
    }

    void toneWithAFileIsEnabledThoughItsBitIsClear_data() { tone_data(); }
    void toneWithAFileIsEnabledThoughItsBitIsClear()
    {
        QFETCH(int, bit);
        QFETCH(QString, key);
        QFETCH(QString, service);
        const QVariantMap tone{
            {QStringLiteral("url"), QUrl(QStringLiteral("file:///sounds/a.ogg"))}};

        QCOMPARE(
            tonesOf({{key, tone}}, ~(1 << bit)),
            QStringList(
                {onValue(service, "tone", QStringLiteral("/sounds/a.ogg")),
                 onValue(service, "enabled", QStringLiteral("On"))}));
    }

    void toneWithoutAUrlIsEnabledWithNoFile_data() { tone_data(); }
    void toneWithoutAUrlIsEnabledWithNoFile()
    {
        QFETCH(int, bit);
        QFETCH(QString, key);
        QFETCH(QString, service);
        const QVariantMap tone{{QStringLiteral("fileName"), QStringLiteral("a.ogg")}};

        // The profile has no value of its own then.
        QCOMPARE(
            tonesOf({{key, tone}}, ~(1 << bit)),
            QStringList(
                {QStringLiteral("general/%1.alert.tone=").arg(service),
                 onValue(service, "enabled", QStringLiteral("On"))}));
    }

    void toneWithoutAFileIsDisabledByItsClearBit_data() { tone_data(); }
    void toneWithoutAFileIsDisabledByItsClearBit()
    {
        QFETCH(int, bit);
        QFETCH(QString, service);

        QCOMPARE(
            tonesOf({}, ~(1 << bit)),
            QStringList({onValue(service, "enabled", QStringLiteral("Off"))}));
    }

    void toneWithoutAFileStaysByItsSetBit() { QCOMPARE(tonesOf({}, -1), QStringList()); }

    void tonesAreWrittenInTheirOrder()
    {
        QVariantMap resources;
        for (const QString& name : Tones::names()) {
            resources.insert(
                Tones::fileKey(name),
                QVariantMap{{QStringLiteral("url"), QUrl::fromLocalFile(QLatin1Char('/') + name)}});
        }

        QStringList order;
        for (const QString& value : tonesOf(resources, -1)) {
            order.append(value.section(QLatin1Char('\''), 1, 1));
        }

        QStringList expected;
        for (const QString& name : Tones::names()) {
            expected << QLatin1Char('/') + name << QStringLiteral("On");
        }
        QCOMPARE(order, expected);
    }

    void toneOfAFileIsEnabledThoughTheFileDisablesIt()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path =
            fixture.addMoodset(R"({"wallpaper": "w.png", "version": 2,)"
                               R"("ringerToneFile": {"file": "r.ogg", "enabled": 0}})");

        fixture.set(path);

        QCOMPARE(
            ThemeFixture::takeProfileValues(),
            QStringList(
                {QStringLiteral("general/ringing.alert.tone='%1'")
                     .arg(fixture.folder.path(QStringLiteral("sounds/r.ogg"))),
                 QStringLiteral("general/ringing.alert.enabled='On'")}));
        QCOMPARE(
            fixture.moodsetRow(path, QStringLiteral("enabledSounds")),
            QStringList(QStringLiteral("-2")));
    }

    void partnerSpaceIsHandedOn()
    {
        const QString entry = QStringLiteral("/usr/share/applications/music.desktop");
        MessageLog log;
        ThemeFixture fixture;
        QFile file(entry);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString path = fixture.addPicture();
        fixture.create(path);
        MoodsetLibrary::exec(
            QStringLiteral("UPDATE moodset SET partnerSpace = 'music' WHERE fileId = ?;"),
            {fixture.fileId(path)});

        fixture.set(path);

        QCOMPARE(
            ThemeFixture::takeKeys(), fixture.keysOf(path) + ThemeFixture::partnerSpaceKeys(entry));
        QVERIFY(file.remove());
    }

    void colourEditOfTheActiveMoodsetRewritesTheColours()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.set(path);
        ThemeFixture::takeKeys();

        QVERIFY(ThemeFixture::moodsets().save(
            fixture.fileId(path),
            {{QStringLiteral("highlightColor"), QStringLiteral("#102030")},
             {QStringLiteral("primaryColor"), QStringLiteral("no colour")},
             {QStringLiteral("secondaryColor"), QStringLiteral("#80ABCDEF")},
             {QStringLiteral("ringerVolume"), 5}}));

        const QString second =
            fixture.moodsetRow(path, QStringLiteral("secondaryHighlightColor")).value(0);
        QCOMPARE(
            StoreTrace::take(),
            QStringList(
                {written(ThemeKeys::HighlightColor, QStringLiteral("#ff102030")),
                 written(ThemeKeys::SecondaryHighlightColor, second),
                 written(ThemeKeys::PrimaryColor, QStringLiteral("#ff000000")),
                 written(ThemeKeys::SecondaryColor, QStringLiteral("#80abcdef"))}));
        QCOMPARE(fixture.takeCreated().size(), 1);
    }

    void colourEditOfAnotherMoodsetWritesNothing()
    {
        MessageLog log;
        ThemeFixture fixture;
        fixture.set(fixture.addPicture());
        const QString other = fixture.addPicture(QStringLiteral("b.png"));
        fixture.create(other);
        StoreTrace::take();

        QVERIFY(ThemeFixture::moodsets().save(
            fixture.fileId(other),
            {{QStringLiteral("highlightColor"), QStringLiteral("#102030")}}));

        QCOMPARE(StoreTrace::take(), QStringList());
    }

    void absentMoodsetWritesNothing()
    {
        MessageLog log;
        ThemeFixture fixture;
        fixture.set(fixture.addPicture());
        StoreTrace::take();

        Q_EMIT ThemeFixture::moodsets().activeMoodsetUpdated(Moodset());

        QCOMPARE(StoreTrace::take(), QStringList());
    }

    void moodsetThatCannotBeStoredIsInForceAllTheSame()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("moodset")));

        fixture.set(path);

        MoodsetLibrary::exec(QStringLiteral("DROP TRIGGER refuse_INSERT_moodset;"));
        QCOMPARE(
            log.takeWarnings(),
            refusedWarnings(
                QStringLiteral("bool MoodsetManager::create(const Moodset&)"),
                QStringLiteral("Failed to execute m_insertMoodset."),
                QStringLiteral(
                    "INSERT INTO moodset ( fileId, homeWallpaper, applicationWallpaper, "
                    "highlightColor, secondaryHighlightColor, primaryColor, secondaryColor, "
                    "ringerVolume, enabledSounds, favorite, partnerSpace, version) "
                    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);")));
        QVERIFY(ThemeFixture::takeKeys().contains(written(ThemeKeys::ActiveMoodset, path)));
        QCOMPARE(fixture.takeCreated(), QList<int>{int(fixture.fileId(path))});
        QCOMPARE(fixture.moodsetRow(path, QStringLiteral("version")), QStringList());
    }

    void moodsetIsAnnouncedWhenItIsStored()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        QStringList stored;
        connect(&fixture.theme, &SystemTheme::moodsetCreated, this, [&] {
            stored = fixture.moodsetRow(path, QStringLiteral("version"));
        });

        fixture.create(path);

        QCOMPARE(stored, QStringList(QStringLiteral("2")));
    }

    void announcementHasTheLowHalfOfTheId()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.create(path);
        const qint64 id = Q_INT64_C(0x7000000000) + fixture.fileId(path);
        MoodsetLibrary::exec(
            QStringLiteral("DELETE FROM moodset WHERE fileId = ?;"), {fixture.fileId(path)});
        MoodsetLibrary::exec(
            QStringLiteral("UPDATE file SET id = ? WHERE id = ?;"), {id, fixture.fileId(path)});
        fixture.takeCreated();

        fixture.create(path);

        QCOMPARE(fixture.takeCreated(), QList<int>{int(id & 0xffffffff)});
        QCOMPARE(fixture.fileId(path), id);
        MoodsetLibrary::exec(QStringLiteral("DELETE FROM file WHERE id = ?;"), {id});
    }

    void screenSizeIsReadOnce()
    {
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.create(path);
        MGConfItem(QStringLiteral("/vantile/screen/primary/height")).set(200);

        fixture.create(path);

        const QImage home(ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg")));
        QCOMPARE(home.width(), ThemeFixture::ScreenHeight);
    }

    void longerSideOfAScreenDecides_data()
    {
        QTest::addColumn<QVariant>("width");
        QTest::addColumn<QVariant>("height");
        QTest::addColumn<int>("side");
        QTest::newRow("portrait") << QVariant(50) << QVariant(70) << 70;
        QTest::newRow("landscape") << QVariant(70) << QVariant(50) << 70;
        QTest::newRow("not set") << QVariant() << QVariant() << 960;
        QTest::newRow("height not set") << QVariant(50) << QVariant() << 960;
        QTest::newRow("width not set") << QVariant() << QVariant(50) << 540;
    }

    void longerSideOfAScreenDecides()
    {
        QFETCH(QVariant, width);
        QFETCH(QVariant, height);
        QFETCH(int, side);
        MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        MGConfItem(QStringLiteral("/vantile/screen/primary/width")).set(width);
        MGConfItem(QStringLiteral("/vantile/screen/primary/height")).set(height);

        fixture.create(path);

        const QImage home(ThemeFixture::wallpaper(path, QStringLiteral("hp.jpg")));
        QCOMPARE(home.size(), QSize(side, side));
    }

private:
    /// The profile values that are written for a moodset with these tones and without a volume.
    static QStringList tonesOf(const QVariantMap& resources, int enabledSounds)
    {
        const MessageLog log;
        ThemeFixture fixture;
        const QString path = fixture.addPicture();
        fixture.set(path);
        StoreTrace::take();
        Moodset moodset(new MoodsetData(fixture.fileId(path), QUrl::fromLocalFile(path)));
        moodset->resources = resources;
        moodset->enabledSounds = enabledSounds;
        moodset->ringerVolume = -1;
        if (!QMetaObject::invokeMethod(
                &fixture.theme, "generateWallpapersFrom", Q_ARG(Moodset, moodset),
                Q_ARG(bool, true))) {
            return {QStringLiteral("not called")};
        }
        return ThemeFixture::takeProfileValues();
    }
};

QTEST_GUILESS_MAIN(SystemThemeTest)

#include "tst_systemtheme.moc"
