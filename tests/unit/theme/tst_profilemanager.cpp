// SPDX-License-Identifier: BSD-3-Clause
#include "theme/profilemanager.h"

#include "profile.h"

#include "dconfcommand.h"
#include "messagelog.h"
#include "mgconfitem.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QTest>

#include <memory>
#include <utility>

namespace {

// The calls of the profile service.
QByteArrayList serviceCalls;

} // namespace

// The linker replaces the functions by these.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __real_profile_tracker_init();
void __real_profile_tracker_quit();
void __real_profile_connection_enable_autoconnect();
int __real_profile_set_profile(const char* profile);
int __real_profile_set_value(const char* profile, const char* key, const char* value);
int __real_profile_set_value_as_int(const char* profile, const char* key, int value);
int __real_profile_set_value_as_bool(const char* profile, const char* key, int value);

int __wrap_profile_tracker_init()
{
    serviceCalls.append("init");
    return __real_profile_tracker_init();
}

void __wrap_profile_tracker_quit()
{
    serviceCalls.append("quit");
    __real_profile_tracker_quit();
}

void __wrap_profile_connection_enable_autoconnect()
{
    serviceCalls.append("autoconnect");
    __real_profile_connection_enable_autoconnect();
}

int __wrap_profile_set_profile(const char* profile)
{
    serviceCalls.append(QByteArray("profile ") + profile);
    return __real_profile_set_profile(profile);
}

int __wrap_profile_set_value(const char* profile, const char* key, const char* value)
{
    serviceCalls.append(QByteArray(profile) + ' ' + key + '=' + value);
    return __real_profile_set_value(profile, key, value);
}

int __wrap_profile_set_value_as_int(const char* profile, const char* key, int value)
{
    serviceCalls.append(QByteArray(profile) + ' ' + key + ":int=" + QByteArray::number(value));
    return __real_profile_set_value_as_int(profile, key, value);
}

int __wrap_profile_set_value_as_bool(const char* profile, const char* key, int value)
{
    serviceCalls.append(QByteArray(profile) + ' ' + key + ":bool=" + QByteArray::number(value));
    return __real_profile_set_value_as_bool(profile, key, value);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

using Calls = QByteArrayList;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// Makes changes in another process, after all changes of this process.
void writeFromOutside(const char* path, const char* value)
{
    MGConfItem::sync();
    runDconf(
        {text("write"), text("/com/zavro/profile/") + text(path),
         text("'") + text(value) + text("'")});
}

QByteArray stored(const char* path)
{
    return runDconf({text("read"), text("/com/zavro/profile/") + text(path)});
}

// Counts all signals of an object.
class SignalRecord : public QObject
{
    Q_OBJECT
public:
    explicit SignalRecord(ProfileManager* manager)
    {
        const QMetaObject& type = ProfileManager::staticMetaObject;
        const QMetaMethod note = staticMetaObject.method(staticMetaObject.indexOfSlot("note()"));
        for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
            if (type.method(i).methodType() == QMetaMethod::Signal) {
                connect(manager, type.method(i), this, note);
            }
        }
    }

    Calls take() { return std::exchange(m_names, {}); }
    const Calls& names() const { return m_names; }

private Q_SLOTS:
    void note()
    {
        m_names.append(ProfileManager::staticMetaObject.method(senderSignalIndex()).name());
    }

private:
    Calls m_names;
};

struct ToneNames
{
    const char* property;
    const char* service;
};

const ToneNames AllToneNames[] = {{"ringerTone", "ringing"},    {"messageTone", "sms"},
                                  {"chatTone", "im"},           {"mailTone", "email"},
                                  {"internetCallTone", "voip"}, {"calendarTone", "calendar"},
                                  {"clockAlarmTone", "clock"}};

void addToneRows()
{
    QTest::addColumn<QByteArray>("tone");
    QTest::addColumn<QByteArray>("service");
    for (const ToneNames& names : AllToneNames) {
        QTest::newRow(names.property) << QByteArray(names.property) << QByteArray(names.service);
    }
}

} // namespace

class ProfileManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        profile_tracker_quit();
        MGConfItem::sync();
        runDconf({text("reset"), text("-f"), text("/com/")});
        serviceCalls.clear();
    }

    void cleanup() { QCoreApplication::processEvents(); }

    void trackerLivesWithTheFirstToTheLastObject()
    {
        auto first = std::make_unique<ProfileManager>();
        QCOMPARE(std::exchange(serviceCalls, {}), Calls({"autoconnect", "init"}));
        auto second = std::make_unique<ProfileManager>();
        QCOMPARE(std::exchange(serviceCalls, {}), Calls({"autoconnect"}));

        first.reset();
        QCOMPARE(std::exchange(serviceCalls, {}), Calls());
        second.reset();
        QCOMPARE(std::exchange(serviceCalls, {}), Calls({"quit"}));

        const ProfileManager third;
        QCOMPARE(serviceCalls, Calls({"autoconnect", "init"}));
    }

    void changesStillComeAfterOneOfTwoIsDestroyed()
    {
        ProfileManager manager;
        SignalRecord record(&manager);
        {
            const ProfileManager other;
        }

        writeFromOutside("silent/k", "x");
        writeFromOutside("general/k", "x");

        QTRY_COMPARE(record.names(), Calls({"profileUpdated", "profileUpdated"}));
    }

    void startsOnTheProfileGeneral()
    {
        ProfileManager manager;

        QCOMPARE(manager.profile(), ProfileManager::General);
        QCOMPARE(manager.activeProfile(), ProfileManager::General);
        QCOMPARE(manager.activateProfileOnChange(), false);
    }

    void activeProfileIsNamedByTheService_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<ProfileManager::Profile>("profile");
        QTest::newRow("moodset") << QByteArray("moodset") << ProfileManager::Moodset;
        QTest::newRow("general") << QByteArray("general") << ProfileManager::General;
        QTest::newRow("silent") << QByteArray("silent") << ProfileManager::Silent;
        QTest::newRow("other") << QByteArray("flight") << ProfileManager::Unknown;
        QTest::newRow("other case") << QByteArray("Silent") << ProfileManager::Unknown;
    }

    void activeProfileIsNamedByTheService()
    {
        QFETCH(QByteArray, name);
        QFETCH(ProfileManager::Profile, profile);
        ProfileManager manager;

        writeFromOutside("active", name.constData());

        QCOMPARE(manager.activeProfile(), profile);
    }

    void setActiveProfileLeavesTheObjectsProfile()
    {
        ProfileManager manager;
        SignalRecord record(&manager);

        manager.setActiveProfile(ProfileManager::Silent);
        QCOMPARE(record.names(), Calls());

        QCOMPARE(manager.profile(), ProfileManager::General);
        QCOMPARE(manager.activeProfile(), ProfileManager::Silent);
        QTRY_COMPARE(record.names(), Calls({"activeProfileChanged"}));
    }

    void setActiveProfileIsPassedOnWhateverTheState()
    {
        ProfileManager manager;
        serviceCalls.clear();

        manager.setActiveProfile(ProfileManager::General);
        manager.setActiveProfile(ProfileManager::General);

        QCOMPARE(serviceCalls, Calls({"profile general", "profile general"}));
    }

    void foreignSwitchOfTheProfileSignals()
    {
        ProfileManager manager;
        SignalRecord record(&manager);

        writeFromOutside("active", "moodset");

        QTRY_COMPARE(record.names(), Calls({"activeProfileChanged"}));
    }

    void unknownProfileWarnsTwiceAndHasAnEmptyName_data()
    {
        QTest::addColumn<int>("profile");
        QTest::newRow("Unknown") << 3;
        QTest::newRow("above") << 4;
        QTest::newRow("below") << -1;
    }

    void unknownProfileWarnsTwiceAndHasAnEmptyName()
    {
        QFETCH(int, profile);
        MessageLog log;
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProfile(static_cast<ProfileManager::Profile>(profile));

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {text("QByteArray _profileName(ProfileManager::Profile)"),
                 text("Unknown profile")}));
        QCOMPARE(manager.profile(), ProfileManager::Unknown);
        QCOMPARE(record.names(), Calls({"profileChanged"}));
        QCOMPARE(serviceCalls, Calls());
        QCOMPARE(manager.ringerVolume(), 0);
        QCOMPARE(manager.ringerToneFile(), QString());
    }

    void unknownActiveProfileWarnsTwiceAndIsPassedOnEmpty()
    {
        MessageLog log;
        ProfileManager manager;
        serviceCalls.clear();

        manager.setActiveProfile(ProfileManager::Unknown);

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {text("QByteArray _profileName(ProfileManager::Profile)"),
                 text("Unknown profile")}));
        QCOMPARE(serviceCalls, Calls({"profile "}));
        QCOMPARE(manager.activeProfile(), ProfileManager::General);
    }

    void setProfileWithTheCurrentOneDoesNothing()
    {
        ProfileManager manager;
        manager.setActivateProfileOnChange(true);
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProfile(ProfileManager::General);

        QCOMPARE(record.names(), Calls());
        QCOMPARE(serviceCalls, Calls());
    }

    void setProfileLeavesTheActiveOneByDefault()
    {
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProfile(ProfileManager::Silent);

        QCOMPARE(manager.profile(), ProfileManager::Silent);
        QCOMPARE(record.names(), Calls({"profileChanged"}));
        QCOMPARE(serviceCalls, Calls());
        QCOMPARE(manager.activeProfile(), ProfileManager::General);
    }

    void setProfileActivatesIfToldTo()
    {
        ProfileManager manager;
        manager.setActivateProfileOnChange(true);
        serviceCalls.clear();

        manager.setProfile(ProfileManager::Moodset);

        QCOMPARE(serviceCalls, Calls({"profile moodset"}));
        QCOMPARE(manager.activeProfile(), ProfileManager::Moodset);
    }

    void setProfileKeepsTheCaches()
    {
        ProfileManager manager;
        manager.setRingerVolume(60);
        manager.setRingerToneFile(text("/general.ogg"));
        writeFromOutside("silent/ringing.alert.volume", "0");
        writeFromOutside("silent/sms.alert.tone", "/silent.ogg");

        manager.setProfile(ProfileManager::Silent);

        QCOMPARE(manager.ringerVolume(), 60);
        QCOMPARE(manager.ringerToneFile(), text("/general.ogg"));
        QCOMPARE(manager.messageToneFile(), text("/silent.ogg"));
    }

    void activateProfileOnChangeSignalsChanges()
    {
        ProfileManager manager;
        SignalRecord record(&manager);

        manager.setActivateProfileOnChange(false);
        manager.setActivateProfileOnChange(true);
        manager.setActivateProfileOnChange(true);

        QCOMPARE(record.names(), Calls({"activateProfileOnChangeChanged"}));
        QCOMPARE(manager.activateProfileOnChange(), true);
    }

    void componentCompleteActivatesIfToldTo()
    {
        ProfileManager manager;
        QQmlParserStatus& status = manager;
        serviceCalls.clear();

        status.classBegin();
        status.componentComplete();
        QCOMPARE(serviceCalls, Calls());
        manager.setActivateProfileOnChange(true);
        status.componentComplete();

        QCOMPARE(serviceCalls, Calls({"profile general"}));
    }

    void firstReadOfTheVolumeSignals()
    {
        writeFromOutside("general/ringing.alert.volume", "70");
        ProfileManager manager;
        SignalRecord record(&manager);

        QCOMPARE(manager.ringerVolume(), 70);
        QCOMPARE(manager.ringerVolume(), 70);

        QCOMPARE(record.names(), Calls({"ringerVolumeChanged"}));
    }

    void negativeVolumeIsReadAgain_data()
    {
        QTest::addColumn<int>("volume");
        QTest::newRow("-1") << -1;
        QTest::newRow("-7") << -7;
    }

    void negativeVolumeIsReadAgain()
    {
        QFETCH(int, volume);
        writeFromOutside("general/ringing.alert.volume", QByteArray::number(volume).constData());
        ProfileManager manager;
        SignalRecord record(&manager);

        QCOMPARE(manager.ringerVolume(), volume);
        QCOMPARE(manager.ringerVolume(), volume);

        QCOMPARE(record.names(), Calls({"ringerVolumeChanged", "ringerVolumeChanged"}));
    }

    void setRingerVolumeWritesAndSignals()
    {
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setRingerVolume(0);

        QCOMPARE(manager.ringerVolume(), 0);
        QCOMPARE(serviceCalls, Calls({"general ringing.alert.volume:int=0"}));
        QCOMPARE(record.names(), Calls({"ringerVolumeChanged"}));
    }

    void setRingerVolumeWithTheCachedOneDoesNothing()
    {
        ProfileManager manager;
        manager.setRingerVolume(50);
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setRingerVolume(50);

        QCOMPARE(serviceCalls, Calls());
        QCOMPARE(record.names(), Calls());
    }

    void toneIsReadOnceWithoutASignal_data() { addToneRows(); }

    void toneIsReadOnceWithoutASignal()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        writeFromOutside(("general/" + service + ".alert.tone").constData(), "/ä.ogg");
        writeFromOutside(("general/" + service + ".alert.enabled").constData(), "On");
        ProfileManager manager;
        SignalRecord record(&manager);

        QCOMPARE(manager.property(tone + "File"), QVariant(text("/ä.ogg")));
        QCOMPARE(manager.property(tone + "Enabled"), QVariant(true));
        // The change waits for the event loop, so only the cache can give the old answer.
        writeFromOutside(("general/" + service + ".alert.tone").constData(), "/b.ogg");
        writeFromOutside(("general/" + service + ".alert.enabled").constData(), "Off");
        QCOMPARE(manager.property(tone + "File"), QVariant(text("/ä.ogg")));
        QCOMPARE(manager.property(tone + "Enabled"), QVariant(true));

        QCOMPARE(record.names(), Calls());
    }

    void fileThatIsNotThereIsAskedForAgain_data() { addToneRows(); }

    void fileThatIsNotThereIsAskedForAgain()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        ProfileManager manager;
        QCOMPARE(manager.property(tone + "File"), QVariant(QString()));

        writeFromOutside(("general/" + service + ".alert.tone").constData(), "/late.ogg");

        QCOMPARE(manager.property(tone + "File"), QVariant(text("/late.ogg")));
    }

    void setToneFileWritesAndSignals_data() { addToneRows(); }

    void setToneFileWritesAndSignals()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProperty(tone + "File", text("/ä.ogg"));

        QCOMPARE(manager.property(tone + "File"), QVariant(text("/ä.ogg")));
        QCOMPARE(serviceCalls, Calls({"general " + service + ".alert.tone=/ä.ogg"}));
        QCOMPARE(record.names(), Calls({tone + "FileChanged"}));
    }

    void setToneFileWithTheCachedOneDoesNothing_data() { addToneRows(); }

    void setToneFileWithTheCachedOneDoesNothing()
    {
        QFETCH(QByteArray, tone);
        ProfileManager manager;
        manager.setProperty(tone + "File", text("/a.ogg"));
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProperty(tone + "File", text("/a.ogg"));

        QCOMPARE(serviceCalls, Calls());
        QCOMPARE(record.names(), Calls());
    }

    void emptyToneFileIsWrittenEveryTime_data() { addToneRows(); }

    void emptyToneFileIsWrittenEveryTime()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProperty(tone + "File", text(""));
        manager.setProperty(tone + "File", text(""));

        const QByteArray call = "general " + service + ".alert.tone=";
        QCOMPARE(serviceCalls, Calls({call, call}));
        QCOMPARE(record.names(), Calls({tone + "FileChanged", tone + "FileChanged"}));
    }

    void setToneEnabledWritesChangesAndSignals_data() { addToneRows(); }

    void setToneEnabledWritesChangesAndSignals()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        ProfileManager manager;
        SignalRecord record(&manager);
        serviceCalls.clear();

        manager.setProperty(tone + "Enabled", false);
        manager.setProperty(tone + "Enabled", false);
        manager.setProperty(tone + "Enabled", true);

        QCOMPARE(manager.property(tone + "Enabled"), QVariant(true));
        const QByteArray call = "general " + service + ".alert.enabled:bool=";
        QCOMPARE(serviceCalls, Calls({call + '0', call + '1'}));
        QCOMPARE(record.names(), Calls({tone + "EnabledChanged", tone + "EnabledChanged"}));
    }

    void writesComeBackAsUpdatesOnly()
    {
        ProfileManager manager;
        SignalRecord record(&manager);
        manager.setRingerVolume(5);
        manager.setRingerToneFile(text("/a.ogg"));
        manager.setRingerToneEnabled(true);
        record.take();

        QTRY_COMPARE(record.names().size(), 6);
        QCOMPARE(record.names().count("profileUpdated"), 6);
        QTRY_COMPARE(stored("general/ringing.alert.enabled"), QByteArray("'On'"));
    }

    void foreignVolumeIsFollowed()
    {
        ProfileManager manager;
        manager.setRingerVolume(5);
        SignalRecord record(&manager);
        QTRY_COMPARE(record.names().size(), 2);
        record.take();

        writeFromOutside("general/ringing.alert.volume", "90");

        QTRY_COMPARE(
            record.names(), Calls({"ringerVolumeChanged", "profileUpdated", "profileUpdated"}));
        QCOMPARE(manager.ringerVolume(), 90);
    }

    void foreignToneFileIsFollowedExceptForTheChats_data() { addToneRows(); }

    void foreignToneFileIsFollowedExceptForTheChats()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        const bool isChat = tone == "chatTone";
        ProfileManager manager;
        manager.setProperty(tone + "File", text("/own.ogg"));
        SignalRecord record(&manager);
        QTRY_COMPARE(record.names().size(), 2);
        record.take();

        writeFromOutside(("general/" + service + ".alert.tone").constData(), "/ä.ogg");

        Calls expected{"profileUpdated", "profileUpdated"};
        if (!isChat) {
            expected.prepend(tone + "FileChanged");
        }
        QTRY_COMPARE(record.names(), expected);
        QCOMPARE(manager.property(tone + "File"), QVariant(text(isChat ? "/own.ogg" : "/ä.ogg")));
    }

    void foreignEnabledFlagIsFollowed_data() { addToneRows(); }

    void foreignEnabledFlagIsFollowed()
    {
        QFETCH(QByteArray, tone);
        QFETCH(QByteArray, service);
        ProfileManager manager;
        manager.setProperty(tone + "Enabled", false);
        SignalRecord record(&manager);
        QTRY_COMPARE(record.names().size(), 2);
        record.take();

        writeFromOutside(("general/" + service + ".alert.enabled").constData(), "yes");

        QTRY_COMPARE(
            record.names(), Calls({tone + "EnabledChanged", "profileUpdated", "profileUpdated"}));
        QCOMPARE(manager.property(tone + "Enabled"), QVariant(true));
    }

    void foreignClearedToneFileReadsAsEmpty()
    {
        writeFromOutside("general/sms.alert.tone", "/a.ogg");
        ProfileManager manager;
        QCOMPARE(manager.messageToneFile(), text("/a.ogg"));
        SignalRecord record(&manager);

        runDconf({text("reset"), text("/com/zavro/profile/general/sms.alert.tone")});

        QTRY_COMPARE(
            record.names(), Calls({"messageToneFileChanged", "profileUpdated", "profileUpdated"}));
        QCOMPARE(manager.messageToneFile(), QString());
    }

    void foreignChangeToTheCachedValueUpdatesOnly()
    {
        ProfileManager manager;
        SignalRecord record(&manager);
        manager.setProfile(ProfileManager::Silent);
        manager.setRingerVolume(5);
        manager.setProfile(ProfileManager::General);
        QTRY_VERIFY(!stored("silent/ringing.alert.volume").isEmpty());
        record.take();

        writeFromOutside("general/ringing.alert.volume", "5");

        QTRY_COMPARE(record.names(), Calls({"profileUpdated", "profileUpdated"}));
    }

    void unknownKeyUpdatesOnly()
    {
        ProfileManager manager;
        SignalRecord record(&manager);

        writeFromOutside("general/vibrating.alert.enabled", "On");

        QTRY_COMPARE(record.names(), Calls({"profileUpdated", "profileUpdated"}));
    }

    void changeOfAProfileThatIsNotActiveUpdatesOnce()
    {
        ProfileManager manager;
        manager.setProfile(ProfileManager::Silent);
        SignalRecord record(&manager);

        writeFromOutside("silent/k", "x");
        writeFromOutside("silent/l", "x");

        QTRY_COMPARE(record.names(), Calls({"profileUpdated", "profileUpdated"}));
    }

    void changeOfAnotherProfileSignalsNothing()
    {
        ProfileManager manager;
        ProfileManager other;
        other.setProfile(ProfileManager::Silent);
        SignalRecord record(&manager);
        SignalRecord otherRecord(&other);

        writeFromOutside("silent/ringing.alert.volume", "5");

        QTRY_COMPARE(otherRecord.names(), Calls({"ringerVolumeChanged", "profileUpdated"}));
        QCOMPARE(record.names(), Calls());
    }

    void clearEmptiesAllKeysInOrderAndKeepsTheCaches()
    {
        ProfileManager manager;
        manager.setRingerVolume(5);
        serviceCalls.clear();

        manager.clear();

        Calls expected{"general ringing.alert.volume="};
        for (const ToneNames& names : AllToneNames) {
            expected.append(QByteArray("general ") + names.service + ".alert.tone=");
        }
        for (const ToneNames& names : AllToneNames) {
            expected.append(QByteArray("general ") + names.service + ".alert.enabled=");
        }
        QCOMPARE(serviceCalls, expected);
        QCOMPARE(manager.ringerVolume(), 5);
    }

    void clearedValuesComeBackThroughTheService()
    {
        writeFromOutside("fallback/sms.alert.tone", "/default.ogg");
        ProfileManager manager;
        manager.setMessageToneFile(text("/own.ogg"));
        QCoreApplication::processEvents();

        manager.clear();

        QCOMPARE(manager.messageToneFile(), text("/own.ogg"));
        QTRY_COMPARE(manager.messageToneFile(), text("/default.ogg"));
    }

    void clearToneEmptiesTheFile_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<Calls>("calls");
        QTest::newRow("RingerVolume") << 0 << Calls({"general ringing.alert.volume="});
        for (int id = 1; id <= 7; ++id) {
            const ToneNames& names = AllToneNames[id - 1];
            QTest::newRow(names.property)
                << id << Calls({QByteArray("general ") + names.service + ".alert.tone="});
        }
    }

    void clearToneEmptiesTheFile()
    {
        QFETCH(int, id);
        QFETCH(Calls, calls);
        ProfileManager manager;
        serviceCalls.clear();

        manager.clearTone(static_cast<ProfileManager::ToneId>(id));

        QCOMPARE(serviceCalls, calls);
    }

    void clearToneSettingsEmptiesTheFileAndTheFlag_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<Calls>("calls");
        QTest::newRow("RingerVolume") << 0 << Calls({"general ringing.alert.volume="});
        for (int id = 1; id <= 7; ++id) {
            const QByteArray start = QByteArray("general ") + AllToneNames[id - 1].service;
            QTest::newRow(AllToneNames[id - 1].property)
                << id << Calls({start + ".alert.tone=", start + ".alert.enabled="});
        }
    }

    void clearToneSettingsEmptiesTheFileAndTheFlag()
    {
        QFETCH(int, id);
        QFETCH(Calls, calls);
        ProfileManager manager;
        serviceCalls.clear();

        manager.clearToneSettings(static_cast<ProfileManager::ToneId>(id));

        QCOMPARE(serviceCalls, calls);
    }

    void unknownToneIdWarnsTwiceAndClearsNothing_data()
    {
        QTest::addColumn<int>("id");
        QTest::newRow("8") << 8;
        QTest::newRow("-1") << -1;
    }

    void unknownToneIdWarnsTwiceAndClearsNothing()
    {
        QFETCH(int, id);
        MessageLog log;
        ProfileManager manager;
        serviceCalls.clear();

        manager.clearTone(static_cast<ProfileManager::ToneId>(id));
        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {text("void ProfileManager::clearTone(ProfileManager::ToneId)"),
                 text("Unknown tone id!")}));
        manager.clearToneSettings(static_cast<ProfileManager::ToneId>(id));
        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {text("void ProfileManager::clearToneSettings(ProfileManager::ToneId)"),
                 text("Unknown tone id!")}));

        QCOMPARE(serviceCalls, Calls());
    }

    void propertiesSignalsAndMethodsComeInOrder()
    {
        const QMetaObject& type = ProfileManager::staticMetaObject;
        QByteArrayList properties;
        for (int i = QObject::staticMetaObject.propertyCount(); i < type.propertyCount(); ++i) {
            properties.append(type.property(i).name());
        }
        QByteArrayList methods;
        for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
            methods.append(type.method(i).methodSignature());
        }

        QCOMPARE(
            properties.join(' '),
            QByteArray(
                "profile activeProfile ringerVolume ringerToneFile messageToneFile chatToneFile "
                "mailToneFile internetCallToneFile calendarToneFile clockAlarmToneFile "
                "ringerToneEnabled messageToneEnabled chatToneEnabled mailToneEnabled "
                "internetCallToneEnabled calendarToneEnabled clockAlarmToneEnabled "
                "activateProfileOnChange"));
        QCOMPARE(
            methods.join(' '),
            QByteArray(
                "profileChanged() ringerVolumeChanged() ringerToneFileChanged() "
                "messageToneFileChanged() messageToneVolumeChanged() "
                "internetCallToneFileChanged() chatToneFileChanged() mailToneFileChanged() "
                "calendarToneFileChanged() clockAlarmToneFileChanged() ringerToneEnabledChanged() "
                "messageToneEnabledChanged() chatToneEnabledChanged() mailToneEnabledChanged() "
                "internetCallToneEnabledChanged() calendarToneEnabledChanged() "
                "clockAlarmToneEnabledChanged() activeProfileChanged() "
                "activateProfileOnChangeChanged() profileUpdated() clear() "
                "clearToneSettings(ToneId) clearTone(ToneId)"));
    }

    void enumerationsAreRegistered()
    {
        const auto profiles = QMetaEnum::fromType<ProfileManager::Profile>();
        const auto tones = QMetaEnum::fromType<ProfileManager::ToneId>();

        QCOMPARE(profiles.valueToKey(2), "Silent");
        QCOMPARE(tones.keyCount(), 8);
        QCOMPARE(tones.valueToKey(4), "MailTone");
    }
};

QTEST_GUILESS_MAIN(ProfileManagerTest)

#include "tst_profilemanager.moc"
