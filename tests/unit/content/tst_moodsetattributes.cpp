// SPDX-License-Identifier: BSD-3-Clause
#include "content/content.h"
#include "content/moodsetattributes.h"

#include <QColor>
#include <QTest>

namespace {

Moodset sampleMoodset()
{
    Moodset moodset(new MoodsetData(5, QUrl()));
    moodset->displayName = QStringLiteral("Coast");
    moodset->ringerVolume = 40;
    moodset->enabledSounds = 1;
    moodset->highlightColor = QColor(1, 2, 3, 4);
    moodset->resources.insert(
        QStringLiteral("ringerToneFile"),
        QVariantMap{{QStringLiteral("url"), QUrl::fromLocalFile(QStringLiteral("/a b.ogg"))}});
    return moodset;
}

} // namespace

/// Tests what clients compare after they have saved attributes.
class MoodsetAttributesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeIsWhatTheDaemonTakes()
    {
        const QVariantMap whole = MoodsetAttributes::whole(*sampleMoodset());

        QCOMPARE(whole.value(QStringLiteral("displayName")), QVariant(QStringLiteral("Coast")));
        QCOMPARE(whole.value(QStringLiteral("favorite")), QVariant(false));
        QCOMPARE(whole.value(QStringLiteral("ringerVolume")), QVariant(40));
        QCOMPARE(
            whole.value(QStringLiteral("highlightColor")), QVariant(QStringLiteral("#04010203")));
        QVERIFY(!whole.contains(QStringLiteral("primaryColor")));
        QCOMPARE(whole.value(QStringLiteral("ringerToneEnabled")), QVariant(true));
        QCOMPARE(whole.value(QStringLiteral("messageToneEnabled")), QVariant(false));
        const QVariantMap tones = whole.value(QStringLiteral("resources")).toMap();
        QCOMPARE(tones.size(), 7);
        QCOMPARE(
            tones.value(QStringLiteral("ringerToneFile")).toMap().value(QStringLiteral("url")),
            QVariant(QStringLiteral("file:///a%20b.ogg")));
        QCOMPARE(MoodsetAttributes::differing(*sampleMoodset(), whole), QStringList());
    }

    void currentHasTheSameAttributes()
    {
        const QVariantMap current = MoodsetAttributes::current(
            *sampleMoodset(),
            {{QStringLiteral("primaryColor"), QStringLiteral("#ff000000")},
             {QStringLiteral("resources"),
              QVariantMap{{QStringLiteral("chatToneFile"), QVariantMap()}}}});

        QCOMPARE(
            current.keys(),
            QStringList({QStringLiteral("primaryColor"), QStringLiteral("resources")}));
        QCOMPARE(current.value(QStringLiteral("primaryColor")), QVariant(QString()));
        QCOMPARE(
            current.value(QStringLiteral("resources")).toMap().keys(),
            QStringList{QStringLiteral("chatToneFile")});
    }

    void whatDiffersIsNamed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("differs");
        const auto tone = [](const char* url) {
            return QVariantMap{
                {QStringLiteral("ringerToneFile"),
                 QVariantMap{{QStringLiteral("url"), QString::fromLatin1(url)}}}};
        };
        QTest::newRow("name") << QStringLiteral("displayName") << QVariant(QStringLiteral("x"))
                              << true;
        QTest::newRow("same volume") << QStringLiteral("ringerVolume") << QVariant(40) << false;
        QTest::newRow("volume of a file")
            << QStringLiteral("ringerVolume") << QVariant(40.0) << false;
        QTest::newRow("volume") << QStringLiteral("ringerVolume") << QVariant(41) << true;
        QTest::newRow("switch") << QStringLiteral("ringerToneEnabled") << QVariant(false) << true;
        QTest::newRow("missing colour")
            << QStringLiteral("primaryColor") << QVariant(QStringLiteral("#ff000000")) << true;
        QTest::newRow("unknown") << QStringLiteral("x") << QVariant(1) << true;
        QTest::newRow("same tone")
            << QStringLiteral("resources") << QVariant(tone("file:///a%20b.ogg")) << false;
        QTest::newRow("same file")
            << QStringLiteral("resources") << QVariant(tone("file:///a b.ogg")) << false;
        QTest::newRow("tone") << QStringLiteral("resources") << QVariant(tone("file:///c.ogg"))
                              << true;
        QTest::newRow("no tone") << QStringLiteral("resources") << QVariant(tone("")) << true;
    }

    void whatDiffersIsNamed()
    {
        QFETCH(QString, name);
        QFETCH(QVariant, value);
        QFETCH(bool, differs);

        QCOMPARE(
            MoodsetAttributes::differing(*sampleMoodset(), {{name, value}}),
            differs ? QStringList{name} : QStringList());
    }
};

QTEST_GUILESS_MAIN(MoodsetAttributesTest)

#include "tst_moodsetattributes.moc"
