// SPDX-License-Identifier: BSD-3-Clause
#include "bridgeconfiguration.h"
#include "messagelog.h"
#include "testfolder.h"

#include <QDir>
#include <QTest>

/// Tests the user's configuration.
class BridgeConfigurationTest : public QObject
{
    Q_OBJECT

private:
    static BridgeConfiguration read(const QByteArray& text)
    {
        TestFolder folder;
        folder.write(QStringLiteral("bridge.conf"), text);
        return BridgeConfiguration::read(folder.path(QStringLiteral("bridge.conf")));
    }

private Q_SLOTS:
    void hasDefaults()
    {
        const MessageLog log;
        const BridgeConfiguration configuration =
            BridgeConfiguration::read(QStringLiteral("/nonexistent/bridge.conf"));
        QCOMPARE(configuration.adapter(QStringLiteral("gnome")), AdapterSetting::Auto);
        QCOMPARE(configuration.adapter(QStringLiteral("files")), AdapterSetting::Off);
        QVERIFY(!configuration.keepsSilent);
        QCOMPARE(configuration.hookLimitSeconds, 10);
    }

    void readsAllValues()
    {
        const MessageLog log;
        const BridgeConfiguration configuration =
            read("[adapters]\ngnome=off\nfiles=on\n[feedbackd]\nsilent=silent\n"
                 "[files]\nhook=~/my hook\nhook-limit=3\n"
                 "[template-a]\nsource=/a, b.css\ntarget=~/\xc3\xa4.css\n");
        QCOMPARE(configuration.adapter(QStringLiteral("gnome")), AdapterSetting::Off);
        QCOMPARE(configuration.adapter(QStringLiteral("files")), AdapterSetting::On);
        QVERIFY(configuration.keepsSilent);
        QCOMPARE(configuration.hook, QDir::homePath() + QStringLiteral("/my hook"));
        QCOMPARE(configuration.hookLimitSeconds, 3);
        QCOMPARE(configuration.templates.size(), 1);
        QCOMPARE(configuration.templates.first().source, QStringLiteral("/a, b.css"));
        QCOMPARE(
            configuration.templates.first().target,
            QDir::homePath() + QString::fromUtf8("/\xc3\xa4.css"));
    }

    void warnsOnceOfEachBadValue_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("warning");
        const QString novalid = QStringLiteral("The configuration has no valid value for ");
        QTest::newRow("setting") << QByteArray("[adapters]\nsway=yes\n")
                                 << novalid + QStringLiteral("\"sway\" but \"yes\"");
        QTest::newRow("silent") << QByteArray("[feedbackd]\nsilent=loud\n")
                                << novalid + QStringLiteral("\"feedbackd/silent\" but \"loud\"");
        QTest::newRow("hook") << QByteArray("[files]\nhook=rm\n")
                              << novalid + QStringLiteral("\"files/hook\" but \"rm\"");
        QTest::newRow("limit") << QByteArray("[files]\nhook-limit=0\n")
                               << novalid + QStringLiteral("\"files/hook-limit\" but \"0\"");
        QTest::newRow("template") << QByteArray("[template-a]\nsource=/a\n")
                                  << QStringLiteral("The configuration names no source or no "
                                                    "target in \"template-a\"");
    }

    void warnsOnceOfEachBadValue()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, warning);
        MessageLog log;
        const BridgeConfiguration configuration = read(text);
        QCOMPARE(log.takeWarnings(), QStringList(warning));
        QVERIFY(configuration.templates.isEmpty());
        QVERIFY(configuration.hook.isEmpty());
        QCOMPARE(configuration.adapter(QStringLiteral("sway")), AdapterSetting::Auto);
        QCOMPARE(configuration.hookLimitSeconds, 10);
    }
};

QTEST_GUILESS_MAIN(BridgeConfigurationTest)

#include "tst_bridgeconfiguration.moc"
