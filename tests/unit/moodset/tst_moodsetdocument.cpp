// SPDX-License-Identifier: BSD-3-Clause
#include "moodset/moodsetdocument.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QJsonObject object(const char* json)
{
    // The tests write single quotes instead of double ones.
    return QJsonDocument::fromJson(QByteArray(json).replace('\'', '"')).object();
}

} // namespace

/// tst_moodsetreaders tests what each reader reads from a whole file.
class MoodsetDocumentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readersDifferInTheKeyOfTheLastColour()
    {
        const QJsonObject colors = object("{'secondaryColor': 'red', 'secondaryColors': 'blue'}");

        QCOMPARE(
            MoodsetDocument(colors, MoodsetDocument::ForRecord).secondaryColor().toString(),
            QStringLiteral("red"));
        QCOMPARE(
            MoodsetDocument(colors, MoodsetDocument::ForRow).secondaryColor().toString(),
            QStringLiteral("blue"));
    }

    void readersDifferInTheVolumeOfAFileWithoutOne()
    {
        QCOMPARE(MoodsetDocument({}, MoodsetDocument::ForRecord).ringerVolume(), -1);
        QCOMPARE(MoodsetDocument({}, MoodsetDocument::ForRow).ringerVolume(), 80);
    }

    void missingRootIsThatOfAFileWithoutAnything()
    {
        const MoodsetDocument document({}, MoodsetDocument::ForRow);

        QCOMPARE(document.wallpaper(), QString());
        QCOMPARE(document.displayName(), QString());
        QVERIFY(document.isFavorite());
        QCOMPARE(document.version(), 1);
        QVERIFY(document.highlightColor().isUndefined());
        QVERIFY(!document.tone(0).isGiven);
        QVERIFY(document.tone(0).isEnabled);
    }

    void onlyABareNameIsAWallpaper_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("wallpaper");
        QTest::newRow("bare") << QByteArray("{'wallpaper': 'w.jpg'}") << QStringLiteral("w.jpg");
        QTest::newRow("slash") << QByteArray("{'wallpaper': 'a/w.jpg'}") << QString();
        QTest::newRow("half a surrogate pair")
            << QByteArray("{'wallpaper': '\\ud800'}") << QString();
    }

    void onlyABareNameIsAWallpaper()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, wallpaper);

        QCOMPARE(MoodsetDocument(object(json), MoodsetDocument::ForRow).wallpaper(), wallpaper);
    }

    void toneIsToldAsItStands()
    {
        const MoodsetDocument document(
            object("{'messageToneFile': {'file': 'a/b', 'enabled': 0}}"), MoodsetDocument::ForRow);

        QVERIFY(document.tone(1).isGiven);
        QCOMPARE(document.tone(1).fileName, QStringLiteral("a/b"));
        QVERIFY(!document.tone(1).isEnabled);
        QVERIFY(!document.tone(0).isGiven);
    }
};

QTEST_APPLESS_MAIN(MoodsetDocumentTest)
#include "tst_moodsetdocument.moc"
