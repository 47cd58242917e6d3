// SPDX-License-Identifier: BSD-3-Clause
#include "moodset/tones.h"

#include <QTest>

class TonesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void vocabularyIsInBitOrder_data()
    {
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("profileKey");
        const auto addTone = [](int bit, const char* name, const char* profileKey) {
            QTest::newRow(name) << bit << QString::fromLatin1(name)
                                << QString::fromLatin1(profileKey);
        };
        addTone(0, "ringerTone", "ringing.alert.tone");
        addTone(1, "messageTone", "sms.alert.tone");
        addTone(2, "mailTone", "email.alert.tone");
        addTone(3, "internetCallTone", "voip.alert.tone");
        addTone(4, "chatTone", "im.alert.tone");
        addTone(5, "calendarTone", "calendar.alert.tone");
        addTone(6, "clockAlarmTone", "clock.alert.tone");
    }

    void vocabularyIsInBitOrder()
    {
        QFETCH(int, bit);
        QFETCH(QString, name);
        QFETCH(QString, profileKey);

        QCOMPARE(Tones::names().at(bit), name);
        QCOMPARE(Tones::profileKeys().at(bit), profileKey);
    }

    void thereAreSeven()
    {
        QCOMPARE(Tones::Count, 7);
        QCOMPARE(Tones::names().size(), 7);
        QCOMPARE(Tones::profileKeys().size(), 7);
    }

    void keysAreMadeFromNames()
    {
        QCOMPARE(Tones::fileKey(QStringLiteral("chatTone")), QStringLiteral("chatToneFile"));
        QCOMPARE(Tones::enabledKey(QStringLiteral("chatTone")), QStringLiteral("chatToneEnabled"));
    }

    void maskChangesInOneBit_data()
    {
        QTest::addColumn<int>("mask");
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("isEnabled");
        QTest::addColumn<int>("expected");
        QTest::newRow("first bit cleared") << -1 << 0 << false << -2;
        QTest::newRow("last bit cleared") << -1 << 6 << false << -65;
        QTest::newRow("bit set") << 0 << 6 << true << 64;
        QTest::newRow("clear bit cleared") << 2 << 0 << false << 2;
        QTest::newRow("set bit set") << 3 << 0 << true << 3;
        QTest::newRow("bits above the tones stay") << 0x781 << 0 << false << 0x780;
    }

    void maskChangesInOneBit()
    {
        QFETCH(int, mask);
        QFETCH(int, index);
        QFETCH(bool, isEnabled);
        QFETCH(int, expected);

        QCOMPARE(Tones::withTone(mask, index, isEnabled), expected);
    }
};

QTEST_GUILESS_MAIN(TonesTest)
#include "tst_tones.moc"
