// SPDX-License-Identifier: BSD-3-Clause
#include "moodset/moodsetsettings.h"

#include "dconfcommand.h"
#include "messagelog.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString SourceKey = QStringLiteral("/desktop/tuvalo/background/portrait/picture_filename");
const QString ApplicationKey =
    QStringLiteral("/desktop/zavro/background/portrait/app_picture_filename");
const QString HomeKey = QStringLiteral("/desktop/zavro/background/portrait/home_picture_filename");

// Makes a change in another process, after all changes of this process.
void writeFromOutside(const QString& key, const char* value)
{
    MGConfItem::sync();
    runDconf({QStringLiteral("write"), key, QString::fromUtf8(value)});
}

} // namespace

class MoodsetSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
    }

    void unsetKeysReadAsEmptyWithoutAWarning()
    {
        const MessageLog log;
        const MoodsetSettings settings;

        QCOMPARE(settings.source(), QUrl());
        QVERIFY(settings.source().isEmpty());
        QVERIFY(!settings.source().isLocalFile());
        QCOMPARE(settings.applicationImagePath(), QString());
        QCOMPARE(settings.homeImagePath(), QString());
    }

    void sourceIsStoredAsALocalPath()
    {
        MoodsetSettings settings;
        const QUrl url(QStringLiteral("file:///home/u/a%20%23b.moodset"));

        settings.setSource(url);

        QCOMPARE(settings.source(), url);
        QCOMPARE(MGConfItem(SourceKey).value(), QVariant(QStringLiteral("/home/u/a #b.moodset")));
    }

    void sourceThatIsNotLocalIsStoredAsAnEmptyText_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("remote") << QUrl(QStringLiteral("http://example.com/a.jpg"));
        QTest::newRow("without scheme") << QUrl(QStringLiteral("/home/u/a.jpg"));
        QTest::newRow("empty") << QUrl();
    }

    void sourceThatIsNotLocalIsStoredAsAnEmptyText()
    {
        QFETCH(QUrl, url);
        MoodsetSettings settings;
        settings.setSource(QUrl(QStringLiteral("file:///former")));

        settings.setSource(url);

        QCOMPARE(MGConfItem(SourceKey).value(), QVariant(QString()));
        QCOMPARE(settings.source(), QUrl());
    }

    void pathsAreStoredAsTheyStand()
    {
        MoodsetSettings settings;

        settings.setApplicationImagePath(QStringLiteral("not/a path"));
        settings.setHomeImagePath(QStringLiteral("/home/ü.jpg"));

        QCOMPARE(MGConfItem(ApplicationKey).value(), QVariant(QStringLiteral("not/a path")));
        QCOMPARE(MGConfItem(HomeKey).value(), QVariant(QStringLiteral("/home/ü.jpg")));
        QCOMPARE(settings.applicationImagePath(), QStringLiteral("not/a path"));
        QCOMPARE(settings.homeImagePath(), QStringLiteral("/home/ü.jpg"));
    }

    void valueOfAnotherTypeIsConverted()
    {
        const MoodsetSettings settings;

        writeFromOutside(ApplicationKey, "5");
        writeFromOutside(HomeKey, "true");

        QCOMPARE(settings.applicationImagePath(), QStringLiteral("5"));
        QCOMPARE(settings.homeImagePath(), QStringLiteral("true"));
    }

    void valueThatCannotBeConvertedReadsAsEmpty()
    {
        const MoodsetSettings settings;

        writeFromOutside(SourceKey, "{'a': <1>}");
        writeFromOutside(ApplicationKey, "[1, 2]");
        writeFromOutside(HomeKey, "['a', 'b']");

        QCOMPARE(settings.source(), QUrl());
        QCOMPARE(settings.applicationImagePath(), QString());
        QCOMPARE(settings.homeImagePath(), QString());
    }

    void eachKeyHasItsSignal_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("sources");
        QTest::addColumn<int>("applicationImages");
        QTest::addColumn<int>("homeImages");
        QTest::newRow("source") << SourceKey << 1 << 0 << 0;
        QTest::newRow("application") << ApplicationKey << 0 << 1 << 0;
        QTest::newRow("home") << HomeKey << 0 << 0 << 1;
    }

    void eachKeyHasItsSignal()
    {
        QFETCH(QString, key);
        QFETCH(int, sources);
        QFETCH(int, applicationImages);
        QFETCH(int, homeImages);
        const MoodsetSettings settings;
        const QSignalSpy sourceSpy(&settings, &MoodsetSettings::sourceChanged);
        const QSignalSpy applicationSpy(&settings, &MoodsetSettings::applicationImageChanged);
        const QSignalSpy homeSpy(&settings, &MoodsetSettings::homeImageChanged);

        writeFromOutside(key, "'/other'");

        QTRY_COMPARE(sourceSpy.count() + applicationSpy.count() + homeSpy.count(), 1);
        QCOMPARE(sourceSpy.count(), sources);
        QCOMPARE(applicationSpy.count(), applicationImages);
        QCOMPARE(homeSpy.count(), homeImages);
    }

    void settersSignalOnceFromTheEventLoop()
    {
        MoodsetSettings settings;
        const QSignalSpy sourceSpy(&settings, &MoodsetSettings::sourceChanged);
        const QSignalSpy applicationSpy(&settings, &MoodsetSettings::applicationImageChanged);
        const QSignalSpy homeSpy(&settings, &MoodsetSettings::homeImageChanged);

        settings.setSource(QUrl(QStringLiteral("file:///a")));
        settings.setApplicationImagePath(QStringLiteral("/b"));
        settings.setHomeImagePath(QStringLiteral("/c"));
        QCOMPARE(sourceSpy.count() + applicationSpy.count() + homeSpy.count(), 0);

        QTRY_COMPARE(homeSpy.count(), 1);
        QCOMPARE(sourceSpy.count(), 1);
        QCOMPARE(applicationSpy.count(), 1);
    }

    void writeThroughAnotherItemSignals()
    {
        const MoodsetSettings settings;
        const QSignalSpy sourceSpy(&settings, &MoodsetSettings::sourceChanged);

        MGConfItem(SourceKey).set(QStringLiteral("/a"));
        QCOMPARE(sourceSpy.count(), 0);

        QTRY_COMPARE(sourceSpy.count(), 1);
        QCOMPARE(settings.source(), QUrl(QStringLiteral("file:///a")));
    }

    void signalsComeInOrderAndThereAreNoProperties()
    {
        const QMetaObject& type = MoodsetSettings::staticMetaObject;
        QByteArrayList names;
        for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
            names.append(type.method(i).methodSignature());
        }

        QCOMPARE(
            names,
            QByteArrayList({"sourceChanged()", "applicationImageChanged()", "homeImageChanged()"}));
        QCOMPARE(type.propertyCount(), QObject::staticMetaObject.propertyCount());
    }
};

QTEST_GUILESS_MAIN(MoodsetSettingsTest)

#include "tst_moodsetsettings.moc"
