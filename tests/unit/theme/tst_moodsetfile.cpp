// SPDX-License-Identifier: BSD-3-Clause
#include "theme/moodsetfile.h"

#include "messagelog.h"
#include "testfolder.h"
#include "toolargewarning.h"
#include "translationcatalog.h"

#include <QFile>
#include <QTest>

namespace {

const QString FileName = QStringLiteral("a.moodset");

/// A directory with one moodset file, and a record with the URL of this file.
struct Bundle
{
    explicit Bundle(const QByteArray& content)
        : moodset(new MoodsetData(7, QUrl::fromLocalFile(folder.path(FileName))))
    {
        // The tests write single quotes instead of double ones.
        folder.write(FileName, QByteArray(content).replace('\'', '"'));
    }
    bool read() { return readMoodsetFile(moodset, folder.path(FileName)); }
    const MoodsetData& record() const { return *moodset.constData(); }

    TestFolder folder;
    Moodset moodset;
};

} // namespace

/// tst_moodsetreaders tests how the keys of a file are read.
class MoodsetFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileWithOnlyAWallpaperGivesDefaults()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg'}");

        QVERIFY(bundle.read());

        const MoodsetData& record = bundle.record();
        QCOMPARE(record.displayName, QString());
        QVERIFY(record.favorite);
        QCOMPARE(record.homeWallpaper, bundle.folder.path(QStringLiteral("images/w.jpg")));
        QVERIFY(!record.highlightColor.isValid());
        QVERIFY(!record.secondaryHighlightColor.isValid());
        QVERIFY(!record.primaryColor.isValid());
        QVERIFY(!record.secondaryColor.isValid());
        QCOMPARE(record.ringerVolume, -1);
        QCOMPARE(record.version, 1);
        QCOMPARE(record.resources, QVariantMap());
        QCOMPARE(record.enabledSounds, -1);
    }

    void coloursComeFromTheirKeys()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'highlightColor': '#010203',"
                      "'secondaryHighlightColor': '#80040506', 'primaryColor': 'steelblue',"
                      "'secondaryColor': '#fff'}");

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().highlightColor, QColor(1, 2, 3));
        QCOMPARE(bundle.record().secondaryHighlightColor, QColor(4, 5, 6, 128));
        QCOMPARE(bundle.record().primaryColor, QColor(70, 130, 180));
        QCOMPARE(bundle.record().secondaryColor, QColor(255, 255, 255));
    }

    void toneIsAFileNameAndAUrl()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'chatToneFile': {'file': 'c.ogg'}}");

        QVERIFY(bundle.read());

        const QVariantMap tone{
            {QStringLiteral("fileName"), QStringLiteral("c.ogg")},
            {QStringLiteral("url"),
             QUrl::fromLocalFile(bundle.folder.path(QStringLiteral("sounds/c.ogg")))}};
        QCOMPARE(bundle.record().resources, QVariantMap({{QStringLiteral("chatToneFile"), tone}}));
    }

    void disabledToneClearsItsBit_data()
    {
        QTest::addColumn<int>("mask");
        const char* const keys[] = {"ringerToneFile",       "messageToneFile", "mailToneFile",
                                    "internetCallToneFile", "chatToneFile",    "calendarToneFile",
                                    "clockAlarmToneFile"};
        int bit = 1;
        for (const char* key : keys) {
            QTest::newRow(key) << ~bit;
            bit <<= 1;
        }
    }

    void disabledToneClearsItsBit()
    {
        QFETCH(int, mask);
        MessageLog log;
        const QByteArray key = QTest::currentDataTag();
        Bundle bundle("{'wallpaper': 'w.jpg', '" + key + "': {'enabled': 0}}");

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().enabledSounds, mask);
        QCOMPARE(bundle.record().resources, QVariantMap());
    }

    void bitsAreNeverSet()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'ringerToneFile': {'enabled': 1},"
                      "'messageToneFile': {'enabled': 0}}");
        bundle.moodset->enabledSounds = 2 + 4;

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().enabledSounds, 4);
    }

    void tonesThatTheFileDoesNotNameStay()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'chatToneFile': {'file': 'new.ogg'}}");
        bundle.moodset->resources = {
            {QStringLiteral("chatToneFile"), QStringLiteral("former")},
            {QStringLiteral("mailToneFile"), QStringLiteral("former")}};

        QVERIFY(bundle.read());

        const QVariantMap resources = bundle.record().resources;
        QCOMPARE(resources.size(), 2);
        QCOMPARE(
            resources.value(QStringLiteral("chatToneFile"))
                .toMap()
                .value(QStringLiteral("fileName")),
            QVariant(QStringLiteral("new.ogg")));
        QCOMPARE(
            resources.value(QStringLiteral("mailToneFile")), QVariant(QStringLiteral("former")));
    }

    void fieldsThatAFileDoesNotHoldStay()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'partnerSpace': 'new',"
                      "'timestamp': '2020-02-03T04:05:06Z'}");
        const QDateTime time(QDate(2019, 1, 2), QTime(3, 4, 5), Qt::UTC);
        bundle.moodset->applicationWallpaper = QStringLiteral("/former.jpg");
        bundle.moodset->partnerSpace = QStringLiteral("former");
        bundle.moodset->timestamp = time;

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().applicationWallpaper, QStringLiteral("/former.jpg"));
        QCOMPARE(bundle.record().partnerSpace, QStringLiteral("former"));
        QCOMPARE(bundle.record().timestamp, time);
    }

    void emptyNameReplacesTheRecords()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg'}");
        bundle.moodset->displayName = QStringLiteral("former");

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().displayName, QString());
    }

    void mediaLieBesideTheRecordsUrl()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg', 'chatToneFile': {'file': 'c.ogg'}}");
        bundle.moodset->url = QUrl(QStringLiteral("file:///elsewhere/b.moodset"));

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().homeWallpaper, QStringLiteral("/elsewhere/images/w.jpg"));
        QCOMPARE(
            bundle.record()
                .resources.value(QStringLiteral("chatToneFile"))
                .toMap()
                .value(QStringLiteral("url"))
                .toUrl(),
            QUrl(QStringLiteral("file:///elsewhere/sounds/c.ogg")));
    }

    void rejectedFileLeavesTheRecord_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not JSON") << QByteArray("{'wallpaper': 'w.jpg'");
        QTest::newRow("not an object") << QByteArray("['wallpaper', 'w.jpg']");
        QTest::newRow("no wallpaper") << QByteArray("{'displayName': 'new'}");
        QTest::newRow("slash in the wallpaper")
            << QByteArray("{'wallpaper': 'a/b.jpg', 'displayName': 'new'}");
    }

    void rejectedFileLeavesTheRecord()
    {
        QFETCH(QByteArray, content);
        MessageLog log;
        Bundle bundle(content);
        const MoodsetData* const former = bundle.moodset.constData();
        bundle.moodset->displayName = QStringLiteral("former");

        QVERIFY(!bundle.read());

        QCOMPARE(bundle.moodset.constData(), former);
        QCOMPARE(bundle.record().displayName, QStringLiteral("former"));
        QCOMPARE(bundle.record().version, 2);
        QCOMPARE(bundle.record().ringerVolume, 80);
        QCOMPARE(bundle.record().homeWallpaper, QString());
    }

    void fileThatCannotBeOpenedIsRejected()
    {
        MessageLog log;
        Bundle bundle("{}");

        QVERIFY(!readMoodsetFile(bundle.moodset, bundle.folder.path(QStringLiteral("missing"))));
        QVERIFY(!readMoodsetFile(bundle.moodset, bundle.folder.path()));
    }

    void fifoIsRejectedAndNotWaitedFor()
    {
        MessageLog log;
        Bundle bundle("{}");
        bundle.folder.makeFifo(QStringLiteral("fifo.moodset"));

        QVERIFY(
            !readMoodsetFile(bundle.moodset, bundle.folder.path(QStringLiteral("fifo.moodset"))));
    }

    void fileThatIsTooLargeIsRejectedWithAWarning()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg'}");
        const QString path = bundle.folder.path(FileName);
        QVERIFY(QFile::resize(path, 16 * 1024 * 1024 + 1));

        QVERIFY(!bundle.read());

        QCOMPARE(log.takeWarnings(), QStringList(tooLargeWarning(path)));
    }

    void otherHandlesKeepTheirRecord()
    {
        MessageLog log;
        Bundle bundle("{'wallpaper': 'w.jpg'}");
        const Moodset other = bundle.moodset;

        QVERIFY(bundle.read());

        QCOMPARE(other->version, 2);
        QCOMPARE(bundle.record().version, 1);
    }

    void nameIsTranslated_data()
    {
        QTest::addColumn<QByteArray>("catalog");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("translation");
        const auto addRow = [](const char* tag, const char* catalog, const char* name,
                               const QString& translation) {
            QTest::newRow(tag) << QByteArray(catalog) << QByteArray(name) << translation;
        };
        addRow("locale", "seasons", "Autumn", QStringLiteral("Herbst"));
        addRow("engineering English", "seasons", "Winter", QStringLiteral("Winter (engineering)"));
        addRow("empty in both catalogues", "seasons", "Spring", QStringLiteral("Spring"));
        addRow("not translated", "seasons", "Summer", QStringLiteral("Summer"));
        addRow("no catalogue", "", "Autumn", QStringLiteral("Autumn"));
        addRow("missing catalogue", "missing", "Autumn", QStringLiteral("Autumn"));
        addRow("no name", "seasons", "", QString());
    }

    void nameIsTranslated()
    {
        QFETCH(QByteArray, catalog);
        QFETCH(QByteArray, name);
        QFETCH(QString, translation);
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog locale(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        Bundle bundle(
            "{'wallpaper': 'w.jpg', 'translationCatalog': '" + catalog + "', 'displayName': '"
            + name + "'}");

        QVERIFY(bundle.read());

        QCOMPARE(bundle.record().displayName, translation);
    }
};

QTEST_GUILESS_MAIN(MoodsetFileTest)
#include "tst_moodsetfile.moc"
