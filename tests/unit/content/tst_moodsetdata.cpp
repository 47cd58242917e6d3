// SPDX-License-Identifier: BSD-3-Clause
#include "content/moodsetdata.h"

#include <QTest>

#include <memory>

namespace {

constexpr int LastRole = 23;

std::unique_ptr<MoodsetData> sampleMoodset()
{
    auto moodset = std::make_unique<MoodsetData>(
        9, QUrl::fromLocalFile(QStringLiteral("/usr/share/moodset/sea/sea.moodset")));
    moodset->mimeType = QStringLiteral("application/x-zavro-moodset");
    moodset->fileName = QStringLiteral("sea.moodset");
    moodset->displayName = QStringLiteral("Sea");
    moodset->homeWallpaper = QStringLiteral("/usr/share/moodset/sea/home.jpg");
    moodset->applicationWallpaper = QStringLiteral("/usr/share/moodset/sea/app.jpg");
    moodset->partnerSpace = QStringLiteral("partner");
    moodset->dorselId = QStringLiteral("0123");
    moodset->highlightColor = QColor(1, 2, 3);
    moodset->secondaryHighlightColor = QColor(4, 5, 6);
    moodset->primaryColor = QColor(7, 8, 9);
    moodset->secondaryColor = QColor(10, 11, 12);
    moodset->timestamp = QDateTime(QDate(2020, 2, 29), QTime(12, 30), Qt::UTC);
    moodset->resources.insert(QStringLiteral("ringerToneFile"), QVariantMap());
    moodset->ringerVolume = 55;
    moodset->enabledSounds = 2;
    moodset->version = 3;
    moodset->favorite = true;
    return moodset;
}

/// All values of a record, by their roles.
QVariantList values(const MoodsetData& moodset)
{
    QVariantList list;
    for (int role = 0; role <= LastRole; ++role) {
        list.append(moodset.data(role));
    }
    return list;
}

} // namespace

class MoodsetDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsLoudWithAllTonesOn()
    {
        const MoodsetData moodset(9, QUrl());

        QCOMPARE(moodset.type, int(MoodsetContent::Moodset));
        QCOMPARE(moodset.ringerVolume, 80);
        QCOMPARE(moodset.enabledSounds, -1);
        for (int role = 14; role <= 20; ++role) {
            QCOMPARE(moodset.data(role), QVariant(true));
        }
        QCOMPARE(moodset.version, 2);
    }

    void startsEmptyInAllElse()
    {
        const MoodsetData moodset(9, QUrl());

        QCOMPARE(moodset.displayName, QString());
        QCOMPARE(moodset.homeWallpaper, QString());
        QCOMPARE(moodset.applicationWallpaper, QString());
        QCOMPARE(moodset.partnerSpace, QString());
        QCOMPARE(moodset.dorselId, QString());
        QVERIFY(!moodset.highlightColor.isValid());
        QVERIFY(!moodset.secondaryHighlightColor.isValid());
        QVERIFY(!moodset.primaryColor.isValid());
        QVERIFY(!moodset.secondaryColor.isValid());
        QVERIFY(moodset.timestamp.isNull());
        QCOMPARE(moodset.resources, QVariantMap());
        QCOMPARE(moodset.favorite, false);
    }

    void roleGivesItsField_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("value");
        const QString folder = QStringLiteral("/usr/share/moodset/sea/");
        QTest::newRow("contentId") << 0 << QVariant(qlonglong(9));
        QTest::newRow("url") << 1
                             << QVariant(
                                    QUrl::fromLocalFile(folder + QStringLiteral("sea.moodset")));
        QTest::newRow("mimeType") << 2 << QVariant(QStringLiteral("application/x-zavro-moodset"));
        QTest::newRow("fileName") << 3 << QVariant(QStringLiteral("sea.moodset"));
        QTest::newRow("readOnly, which gives the path")
            << 4 << QVariant(folder + QStringLiteral("sea.moodset"));
        QTest::newRow("displayName") << 5 << QVariant(QStringLiteral("Sea"));
        QTest::newRow("favorite") << 6 << QVariant(true);
        QTest::newRow("wallpaperUrl")
            << 7 << QVariant(QUrl::fromLocalFile(folder + QStringLiteral("home.jpg")));
        QTest::newRow("applicationWallpaperUrl")
            << 8 << QVariant(QUrl::fromLocalFile(folder + QStringLiteral("app.jpg")));
        QTest::newRow("primaryColor") << 9 << QVariant(QColor(7, 8, 9));
        QTest::newRow("secondaryColor") << 10 << QVariant(QColor(10, 11, 12));
        QTest::newRow("highlightColor") << 11 << QVariant(QColor(1, 2, 3));
        QTest::newRow("secondaryHighlightColor") << 12 << QVariant(QColor(4, 5, 6));
        QTest::newRow("ringerVolume") << 13 << QVariant(55);
        QTest::newRow("resources")
            << 21 << QVariant(QVariantMap({{QStringLiteral("ringerToneFile"), QVariantMap()}}));
        QTest::newRow("dorselId") << 22 << QVariant(QStringLiteral("0123"));
        QTest::newRow("version") << 23 << QVariant(3);
        QTest::newRow("one below the first") << -1 << QVariant();
        QTest::newRow("one above the last") << 24 << QVariant();
    }

    void roleGivesItsField()
    {
        QFETCH(int, role);
        QFETCH(QVariant, value);
        const std::unique_ptr<MoodsetData> moodset = sampleMoodset();

        const QVariant read = moodset->data(role);

        QCOMPARE(read.userType(), value.userType());
        QCOMPARE(read, value);
    }

    void emptyWallpaperPathGivesAnEmptyUrl_data()
    {
        QTest::addColumn<int>("role");
        QTest::newRow("home") << 7;
        QTest::newRow("application") << 8;
    }

    void emptyWallpaperPathGivesAnEmptyUrl()
    {
        QFETCH(int, role);
        const MoodsetData moodset(9, QUrl());

        const QVariant url = moodset.data(role);

        QCOMPARE(url.userType(), int(QMetaType::QUrl));
        QVERIFY(url.toUrl().isEmpty());
        QCOMPARE(url.toUrl().scheme(), QString());
    }

    void displayNameIsNotTheFilesOne()
    {
        MoodsetData moodset(9, QUrl());
        FileData& file = moodset;
        file.displayName = QStringLiteral("file");

        QCOMPARE(moodset.data(5), QVariant(QString()));
        QVERIFY(moodset.setData(5, QStringLiteral("moodset")));

        QCOMPARE(moodset.data(5), QVariant(QStringLiteral("moodset")));
        QCOMPARE(file.displayName, QStringLiteral("file"));
    }

    void rolesHaveNames()
    {
        const QHash<int, QByteArray> expected{
            {0, "contentId"},
            {1, "url"},
            {2, "mimeType"},
            {3, "fileName"},
            {4, "readOnly"},
            {5, "displayName"},
            {6, "favorite"},
            {7, "wallpaperUrl"},
            {8, "applicationWallpaperUrl"},
            {9, "primaryColor"},
            {10, "secondaryColor"},
            {11, "highlightColor"},
            {12, "secondaryHighlightColor"},
            {13, "ringerVolume"},
            {14, "ringerToneEnabled"},
            {15, "messageToneEnabled"},
            {16, "mailToneEnabled"},
            {17, "internetCallToneEnabled"},
            {18, "chatToneEnabled"},
            {19, "calendarToneEnabled"},
            {20, "clockAlarmToneEnabled"},
            {21, "resources"},
            {22, "dorselId"},
            {23, "version"}};

        QCOMPARE(MoodsetData::roleNames(), expected);
    }

    void toneRoleReadsAndWritesItsBit_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<int>("bit");
        QTest::newRow("ringer") << 14 << 1;
        QTest::newRow("message") << 15 << 2;
        QTest::newRow("mail") << 16 << 4;
        QTest::newRow("internet call") << 17 << 8;
        QTest::newRow("chat") << 18 << 16;
        QTest::newRow("calendar") << 19 << 32;
        QTest::newRow("clock alarm") << 20 << 64;
    }

    void toneRoleReadsAndWritesItsBit()
    {
        QFETCH(int, role);
        QFETCH(int, bit);
        MoodsetData moodset(9, QUrl());

        QVERIFY(moodset.setData(role, false));
        QCOMPARE(moodset.enabledSounds, ~bit);
        QCOMPARE(moodset.data(role), QVariant(false));

        moodset.enabledSounds = 0;
        QVERIFY(moodset.setData(role, 1));
        QCOMPARE(moodset.enabledSounds, bit);
        QCOMPARE(moodset.data(role), QVariant(true));
    }

    void valueIsConvertedToTheFieldsType_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<QVariant>("read");
        const QVariantMap resources{{QStringLiteral("mailToneFile"), QVariantMap()}};
        QTest::newRow("displayName") << 5 << QVariant(12) << QVariant(QStringLiteral("12"));
        QTest::newRow("favorite") << 6 << QVariant(QStringLiteral("false")) << QVariant(false);
        QTest::newRow("ringerVolume") << 13 << QVariant(QStringLiteral("33")) << QVariant(33);
        QTest::newRow("ringerVolume that is no number")
            << 13 << QVariant(QStringLiteral("loud")) << QVariant(0);
        QTest::newRow("resources") << 21 << QVariant(resources) << QVariant(resources);
        QTest::newRow("resources that are no map")
            << 21 << QVariant(QStringLiteral("x")) << QVariant(QVariantMap());
    }

    void valueIsConvertedToTheFieldsType()
    {
        QFETCH(int, role);
        QFETCH(QVariant, written);
        QFETCH(QVariant, read);
        const std::unique_ptr<MoodsetData> moodset = sampleMoodset();

        QVERIFY(moodset->setData(role, written));

        QCOMPARE(moodset->data(role), read);
    }

    void colourIsTakenAsItIsOrConverted_data()
    {
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<QColor>("read");
        QTest::newRow("colour") << QVariant(QColor(20, 30, 40, 50)) << QColor(20, 30, 40, 50);
        QTest::newRow("text") << QVariant(QStringLiteral("#80112233"))
                              << QColor(0x11, 0x22, 0x33, 0x80);
        QTest::newRow("name") << QVariant(QStringLiteral("red")) << QColor(255, 0, 0);
        QTest::newRow("text of no colour") << QVariant(QStringLiteral("reddish")) << QColor();
        QTest::newRow("number") << QVariant(7) << QColor();
        QTest::newRow("nothing") << QVariant() << QColor();
    }

    void colourIsTakenAsItIsOrConverted()
    {
        QFETCH(QVariant, written);
        QFETCH(QColor, read);

        for (int role = 9; role <= 12; ++role) {
            const std::unique_ptr<MoodsetData> moodset = sampleMoodset();
            QVariantList expected = values(*moodset);
            expected[role] = read;

            QVERIFY(moodset->setData(role, written));

            QCOMPARE(values(*moodset), expected);
            QCOMPARE(moodset->data(role).value<QColor>().isValid(), read.isValid());
        }
    }

    void refusesRolesThatAreNotToBeWritten_data()
    {
        QTest::addColumn<int>("role");
        for (const int role : {-1, 0, 1, 2, 3, 4, 7, 8, 22, 23, 24}) {
            QTest::newRow(qPrintable(QString::number(role))) << role;
        }
    }

    void refusesRolesThatAreNotToBeWritten()
    {
        QFETCH(int, role);
        const std::unique_ptr<MoodsetData> moodset = sampleMoodset();
        const QVariantList before = values(*moodset);

        QVERIFY(!moodset->setData(role, QStringLiteral("x")));

        QCOMPARE(values(*moodset), before);
    }

    void cloneHasTheSameValuesAndNoReferences()
    {
        const std::unique_ptr<MoodsetData> moodset = sampleMoodset();
        moodset->ref.ref();
        const ContentData& base = *moodset;

        const std::unique_ptr<ContentData> copy(base.clone());

        const ContentData& content = *copy;
        QVERIFY(typeid(content) == typeid(MoodsetData));
        const auto& same = static_cast<const MoodsetData&>(*copy);
        QCOMPARE(same.ref.loadRelaxed(), 0);
        QCOMPARE(same.type, moodset->type);
        QCOMPARE(values(same), values(*moodset));
        QCOMPARE(same.partnerSpace, QStringLiteral("partner"));
        QCOMPARE(same.timestamp, moodset->timestamp);
        QCOMPARE(same.enabledSounds, 2);
    }
};

QTEST_GUILESS_MAIN(MoodsetDataTest)

#include "tst_moodsetdata.moc"
