// SPDX-License-Identifier: BSD-3-Clause
#include "dconfcommand.h"
#include "mgconfitem.h"
#include "profile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <cstdlib>

namespace {

QByteArray value(const char* profile, const QByteArray& key)
{
    char* const text = profile_get_value(profile, key.constData());
    const QByteArray bytes(text);
    std::free(text);
    return bytes;
}

const char* const ToneKinds[] = {"ringing", "sms", "im", "email", "voip", "calendar", "clock"};

} // namespace

/// Tests the installed defaults for a user whose key/value store has no system database.
class ProfileDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
        QVERIFY(data.mkpath(QStringLiteral("moodsetd")));
        QVERIFY(QFile::copy(
            QStringLiteral(PROFILE_DEFAULTS),
            data.filePath(QStringLiteral("moodsetd/profile-defaults"))));
    }

    void cleanup()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/com/")});
    }

    void everyToneHasAFileAndIsEnabled_data()
    {
        QTest::addColumn<QByteArray>("file");
        const char* const files[] = {"phone-incoming-call.oga", "message-new-instant.oga",
                                     "message-new-instant.oga", "message.oga",
                                     "phone-incoming-call.oga", "bell.oga",
                                     "alarm-clock-elapsed.oga"};
        int i = 0;
        for (const char* kind : ToneKinds) {
            QTest::newRow(kind) << QByteArray("/usr/share/sounds/freedesktop/stereo/") + files[i++];
        }
    }

    void everyToneHasAFileAndIsEnabled()
    {
        QFETCH(QByteArray, file);
        const QByteArray kind = QTest::currentDataTag();

        for (const char* profile : {"fallback", "general", "moodset", "silent"}) {
            QCOMPARE(value(profile, kind + ".alert.tone"), file);
            QCOMPARE(value(profile, kind + ".alert.enabled"), QByteArray("On"));
            QCOMPARE(profile_get_value_as_bool(profile, kind + ".alert.enabled"), 1);
        }
    }

    void volumeIsThatOfANewMoodset()
    {
        QCOMPARE(value("fallback", "ringing.alert.volume"), QByteArray("80"));
        QCOMPARE(profile_get_value_as_int("general", "ringing.alert.volume"), 80);
    }

    void otherKeysHaveNoDefault()
    {
        QCOMPARE(value("fallback", "ringing.alert.pattern"), QByteArray());
    }

    void storeHoldsNoneOfThem()
    {
        QCOMPARE(runDconf({QStringLiteral("list"), QStringLiteral("/")}), QByteArray());
    }

    void storesFallbackGoesFirst()
    {
        QCOMPARE(profile_set_value("fallback", "im.alert.tone", "/system.ogg"), 0);

        QCOMPARE(value("general", "im.alert.tone"), QByteArray("/system.ogg"));
    }

    void usersValueGoesFirst()
    {
        QCOMPARE(profile_set_value("general", "sms.alert.tone", "/own.ogg"), 0);

        QCOMPARE(value("general", "sms.alert.tone"), QByteArray("/own.ogg"));
        QCOMPARE(
            value("silent", "sms.alert.tone"),
            QByteArray("/usr/share/sounds/freedesktop/stereo/message-new-instant.oga"));
    }

    void clearedValueIsTheDefaultAgain()
    {
        QCOMPARE(profile_set_value_as_bool("general", "clock.alert.enabled", 0), 0);
        QCOMPARE(profile_get_value_as_bool("general", "clock.alert.enabled"), 0);

        QCOMPARE(profile_set_value("general", "clock.alert.enabled", ""), 0);

        QCOMPARE(profile_get_value_as_bool("general", "clock.alert.enabled"), 1);
    }
};

QTEST_GUILESS_MAIN(ProfileDefaultsTest)
#include "tst_profiledefaults.moc"
