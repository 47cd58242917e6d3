// SPDX-License-Identifier: BSD-3-Clause
#include "profile.h"

#include "dconfcommand.h"
#include "messagelog.h"
#include "mgconfitem.h"

#include <QTest>

#include <cstdlib>

namespace {

// The result of a call is freed here, so that the leak check proves that the caller owns it.
QByteArray taken(char* text)
{
    const QByteArray bytes = text != nullptr ? QByteArray(text) : QByteArray("null");
    std::free(text);
    return bytes;
}

QByteArray value(const char* profile, const char* key)
{
    return taken(profile_get_value(profile, key));
}

// Reads or changes the store in another process, after all changes of this process.
QByteArray dconf(const char* command, const char* path, const char* argument = nullptr)
{
    MGConfItem::sync();
    QStringList arguments{
        QString::fromUtf8(command),
        QStringLiteral("/com/zavro/profile/") + QString::fromUtf8(path)};
    if (argument != nullptr) {
        arguments.append(QString::fromUtf8(argument));
    }
    return runDconf(arguments);
}

} // namespace

class ProfileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(useSystemDefaults(
            "[com/zavro/profile/fallback]\nsms.alert.tone='/usr/share/sounds/sms.ogg'\n"));
    }

    void cleanup()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/com/")});
    }

    void activeProfileIsGeneralIfUnset()
    {
        QCOMPARE(taken(profile_get_profile()), QByteArray("general"));
    }

    void activeProfileIsGeneralIfEmpty()
    {
        dconf("write", "active", "''");

        QCOMPARE(taken(profile_get_profile()), QByteArray("general"));
    }

    void activeProfileIsWhatAnotherProcessSet()
    {
        dconf("write", "active", "'flight'");

        QCOMPARE(taken(profile_get_profile()), QByteArray("flight"));
    }

    void settingTheActiveProfileStoresItsName()
    {
        QCOMPARE(profile_set_profile("silent"), 0);
        QCOMPARE(taken(profile_get_profile()), QByteArray("silent"));

        QCOMPARE(dconf("read", "active"), QByteArray("'silent'"));
    }

    void malformedActiveProfileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("slash") << QByteArray("a/b");
        QTest::newRow("not UTF-8") << QByteArray("\xff");
    }

    void malformedActiveProfileIsRefused()
    {
        QFETCH(QByteArray, name);
        const MessageLog log;

        QCOMPARE(profile_set_profile(name.constData()), -1);

        QCOMPARE(taken(profile_get_profile()), QByteArray("general"));
    }

    void valueLiesAsTextUnderProfileAndKey()
    {
        QCOMPARE(profile_set_value("silent", "im.alert.tone", "/home/u/grün ♪.ogg"), 0);
        QCOMPARE(value("silent", "im.alert.tone"), QByteArray("/home/u/grün ♪.ogg"));

        QCOMPARE(dconf("read", "silent/im.alert.tone"), QByteArray("'/home/u/grün ♪.ogg'"));
    }

    void valueOfAnotherProcessIsRead()
    {
        dconf("write", "general/im.alert.tone", "'/b.ogg'");

        QCOMPARE(value("general", "im.alert.tone"), QByteArray("/b.ogg"));
    }

    void missingValueIsNull()
    {
        QCOMPARE(value("general", "im.alert.tone"), QByteArray("null"));
        QCOMPARE(value("fallback", "im.alert.tone"), QByteArray("null"));
    }

    void fallbackHoldsTheSystemsDefaults()
    {
        QCOMPARE(value("fallback", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
    }

    void missingValueIsTheFallbacks()
    {
        QCOMPARE(value("general", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
        QCOMPARE(value("flight", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
    }

    void ownValueHidesTheFallbacks()
    {
        profile_set_value("general", "sms.alert.tone", "/own.ogg");

        QCOMPARE(value("general", "sms.alert.tone"), QByteArray("/own.ogg"));
        QCOMPARE(value("silent", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
    }

    void emptyTextClearsTheOwnValue_data()
    {
        QTest::addColumn<bool>("isNull");
        QTest::newRow("empty") << false;
        QTest::newRow("null") << true;
    }

    void emptyTextClearsTheOwnValue()
    {
        QFETCH(bool, isNull);
        profile_set_value("general", "sms.alert.tone", "/own.ogg");

        QCOMPARE(profile_set_value("general", "sms.alert.tone", isNull ? nullptr : ""), 0);

        QCOMPARE(value("general", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
        QCOMPARE(dconf("read", "general/sms.alert.tone"), QByteArray());
    }

    void storedEmptyTextIsNoValue()
    {
        dconf("write", "general/sms.alert.tone", "''");

        QCOMPARE(value("general", "sms.alert.tone"), QByteArray("/usr/share/sounds/sms.ogg"));
    }

    void malformedNamesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("profile");
        QTest::addColumn<QByteArray>("key");
        QTest::newRow("empty profile") << QByteArray("") << QByteArray("k");
        QTest::newRow("empty key") << QByteArray("general") << QByteArray("");
        QTest::newRow("slash in profile") << QByteArray("a/b") << QByteArray("k");
        QTest::newRow("slash in key") << QByteArray("general") << QByteArray("a/b");
        QTest::newRow("key not UTF-8") << QByteArray("general") << QByteArray("\xff");
    }

    void malformedNamesAreRefused()
    {
        QFETCH(QByteArray, profile);
        QFETCH(QByteArray, key);
        const MessageLog log;

        QCOMPARE(profile_set_value(profile.constData(), key.constData(), "x"), -1);

        QCOMPARE(value(profile.constData(), key.constData()), QByteArray("null"));
    }

    void integersAreDecimalTexts()
    {
        QCOMPARE(profile_set_value_as_int("general", "ringing.alert.volume", -80), 0);

        QCOMPARE(value("general", "ringing.alert.volume"), QByteArray("-80"));
        QCOMPARE(profile_get_value_as_int("general", "ringing.alert.volume"), -80);
    }

    void textReadsAsInteger_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("number");
        QTest::newRow("text") << QByteArray("'60'") << 60;
        QTest::newRow("plain number") << QByteArray("60") << 60;
        QTest::newRow("zeros in front") << QByteArray("'007'") << 7;
        QTest::newRow("no number") << QByteArray("'loud'") << 0;
        QTest::newRow("too big") << QByteArray("'99999999999'") << 0;
        QTest::newRow("list") << QByteArray("[1, 2]") << 0;
        QTest::newRow("tuple") << QByteArray("(1, 2)") << 0;
    }

    void textReadsAsInteger()
    {
        QFETCH(QByteArray, stored);
        QFETCH(int, number);

        dconf("write", "general/ringing.alert.volume", stored.constData());

        QCOMPARE(profile_get_value_as_int("general", "ringing.alert.volume"), number);
    }

    void missingValueReadsAsZeroAndFalse()
    {
        QCOMPARE(profile_get_value_as_int("general", "ringing.alert.volume"), 0);
        QCOMPARE(profile_get_value_as_bool("general", "ringing.alert.enabled"), 0);
    }

    void booleansAreOnAndOff()
    {
        QCOMPARE(profile_set_value_as_bool("general", "im.alert.enabled", 2), 0);
        QCOMPARE(value("general", "im.alert.enabled"), QByteArray("On"));
        QCOMPARE(profile_get_value_as_bool("general", "im.alert.enabled"), 1);

        QCOMPARE(profile_set_value_as_bool("general", "im.alert.enabled", 0), 0);
        QCOMPARE(value("general", "im.alert.enabled"), QByteArray("Off"));
        QCOMPARE(profile_get_value_as_bool("general", "im.alert.enabled"), 0);
    }

    void plainBooleanIsRead()
    {
        dconf("write", "general/im.alert.enabled", "true");

        QCOMPARE(profile_get_value_as_bool("general", "im.alert.enabled"), 1);
    }

    void booleansAreParsedLeniently_data()
    {
        QTest::addColumn<bool>("truth");
        for (const char* const text : {"On", "on", "ON", "True", "true", "Yes", "yes", "1"}) {
            QTest::newRow(text) << true;
        }
        for (const char* const text : {"Off", "False", "No", "0", "2", "", "On ", "enabled"}) {
            QTest::newRow(text) << false;
        }
    }

    void booleansAreParsedLeniently()
    {
        QFETCH(bool, truth);

        QCOMPARE(profile_parse_bool(QTest::currentDataTag()), truth ? 1 : 0);
    }

    void nullParsesAsFalse() { QCOMPARE(profile_parse_bool(nullptr), 0); }
};

QTEST_GUILESS_MAIN(ProfileTest)

#include "tst_profile.moc"
