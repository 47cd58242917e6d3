// SPDX-License-Identifier: BSD-3-Clause
#include "profilemanager.h"

#include "profile.h"
#include "themelog.h"

#include <cstdlib>
#include <memory>

namespace {

constexpr const char* VolumeKey = "ringing.alert.volume";

struct Free
{
    void operator()(char* text) const { std::free(text); }
};

/// A text from the profile service. The caller owns it.
using ServiceText = std::unique_ptr<char, Free>;

QByteArray _profileName(ProfileManager::Profile profile)
{
    switch (profile) {
    case ProfileManager::Moodset:
        return QByteArrayLiteral("moodset");
    case ProfileManager::General:
        return QByteArrayLiteral("general");
    case ProfileManager::Silent:
        return QByteArrayLiteral("silent");
    case ProfileManager::Unknown:
        break;
    }
    qCWarning(themeLog) << "QByteArray _profileName(ProfileManager::Profile)";
    qCWarning(themeLog) << "Unknown profile";
    return {};
}

ProfileManager::Profile profileFromName(const QByteArray& name)
{
    if (name == "moodset") {
        return ProfileManager::Moodset;
    }
    if (name == "general") {
        return ProfileManager::General;
    }
    if (name == "silent") {
        return ProfileManager::Silent;
    }
    return ProfileManager::Unknown;
}

} // namespace

int ProfileManager::s_instanceCounter = 0;

const std::array<ProfileManager::Tone, ProfileManager::ToneCount> ProfileManager::ToneKeys{{
    {"ringing.alert.tone", "ringing.alert.enabled", &ProfileManager::ringerToneFileChanged,
     &ProfileManager::ringerToneEnabledChanged, true},
    {"sms.alert.tone", "sms.alert.enabled", &ProfileManager::messageToneFileChanged,
     &ProfileManager::messageToneEnabledChanged, true},
    // Only the file of the chat tone does not follow the service.
    {"im.alert.tone", "im.alert.enabled", &ProfileManager::chatToneFileChanged,
     &ProfileManager::chatToneEnabledChanged, false},
    {"email.alert.tone", "email.alert.enabled", &ProfileManager::mailToneFileChanged,
     &ProfileManager::mailToneEnabledChanged, true},
    {"voip.alert.tone", "voip.alert.enabled", &ProfileManager::internetCallToneFileChanged,
     &ProfileManager::internetCallToneEnabledChanged, true},
    {"calendar.alert.tone", "calendar.alert.enabled", &ProfileManager::calendarToneFileChanged,
     &ProfileManager::calendarToneEnabledChanged, true},
    {"clock.alert.tone", "clock.alert.enabled", &ProfileManager::clockAlarmToneFileChanged,
     &ProfileManager::clockAlarmToneEnabledChanged, true},
}};

ProfileManager::ProfileManager(QObject* parent)
    : QObject(parent)
{
    profile_track_add_profile_cb(&handleProfile, this, nullptr);
    profile_track_add_active_cb(&handleValue, this, nullptr);
    profile_track_add_change_cb(&handleValue, this, nullptr);
    profile_connection_enable_autoconnect();
    if (s_instanceCounter == 0) {
        profile_tracker_init();
    }
    ++s_instanceCounter;
}

ProfileManager::~ProfileManager()
{
    --s_instanceCounter;
    if (s_instanceCounter == 0) {
        profile_tracker_quit();
    }
    profile_track_remove_profile_cb(&handleProfile, this);
    profile_track_remove_active_cb(&handleValue, this);
    profile_track_remove_change_cb(&handleValue, this);
}

ProfileManager::Profile ProfileManager::profile() const
{
    return profileFromName(m_profile);
}

void ProfileManager::setProfile(Profile profile)
{
    const QByteArray name = _profileName(profile);
    if (name == m_profile) {
        return;
    }
    m_profile = name;
    Q_EMIT profileChanged();
    if (m_activateProfileOnChange) {
        profile_set_profile(name.constData());
    }
}

ProfileManager::Profile ProfileManager::activeProfile() const
{
    const ServiceText name(profile_get_profile());
    return profileFromName(name.get());
}

void ProfileManager::setActiveProfile(Profile profile)
{
    profile_set_profile(_profileName(profile).constData());
}

bool ProfileManager::activateProfileOnChange() const
{
    return m_activateProfileOnChange;
}

void ProfileManager::setActivateProfileOnChange(bool activate)
{
    if (activate == m_activateProfileOnChange) {
        return;
    }
    m_activateProfileOnChange = activate;
    Q_EMIT activateProfileOnChangeChanged();
}

int ProfileManager::ringerVolume()
{
    if (m_ringerVolume < 0) {
        m_ringerVolume = profile_get_value_as_int(m_profile.constData(), VolumeKey);
        Q_EMIT ringerVolumeChanged();
    }
    return m_ringerVolume;
}

void ProfileManager::setRingerVolume(int volume)
{
    if (volume == m_ringerVolume) {
        return;
    }
    m_ringerVolume = volume;
    profile_set_value_as_int(m_profile.constData(), VolumeKey, volume);
    Q_EMIT ringerVolumeChanged();
}

QString ProfileManager::ringerToneFile()
{
    return toneFile(RingerTone);
}

void ProfileManager::setRingerToneFile(const QString& file)
{
    setToneFile(RingerTone, file);
}

bool ProfileManager::ringerToneEnabled()
{
    return toneEnabled(RingerTone);
}

void ProfileManager::setRingerToneEnabled(bool enabled)
{
    setToneEnabled(RingerTone, enabled);
}

QString ProfileManager::messageToneFile()
{
    return toneFile(MessageTone);
}

void ProfileManager::setMessageToneFile(const QString& file)
{
    setToneFile(MessageTone, file);
}

bool ProfileManager::messageToneEnabled()
{
    return toneEnabled(MessageTone);
}

void ProfileManager::setMessageToneEnabled(bool enabled)
{
    setToneEnabled(MessageTone, enabled);
}

QString ProfileManager::chatToneFile()
{
    return toneFile(ChatTone);
}

void ProfileManager::setChatToneFile(const QString& file)
{
    setToneFile(ChatTone, file);
}

bool ProfileManager::chatToneEnabled()
{
    return toneEnabled(ChatTone);
}

void ProfileManager::setChatToneEnabled(bool enabled)
{
    setToneEnabled(ChatTone, enabled);
}

QString ProfileManager::mailToneFile()
{
    return toneFile(MailTone);
}

void ProfileManager::setMailToneFile(const QString& file)
{
    setToneFile(MailTone, file);
}

bool ProfileManager::mailToneEnabled()
{
    return toneEnabled(MailTone);
}

void ProfileManager::setMailToneEnabled(bool enabled)
{
    setToneEnabled(MailTone, enabled);
}

QString ProfileManager::internetCallToneFile()
{
    return toneFile(InternetCallTone);
}

void ProfileManager::setInternetCallToneFile(const QString& file)
{
    setToneFile(InternetCallTone, file);
}

bool ProfileManager::internetCallToneEnabled()
{
    return toneEnabled(InternetCallTone);
}

void ProfileManager::setInternetCallToneEnabled(bool enabled)
{
    setToneEnabled(InternetCallTone, enabled);
}

QString ProfileManager::calendarToneFile()
{
    return toneFile(CalendarTone);
}

void ProfileManager::setCalendarToneFile(const QString& file)
{
    setToneFile(CalendarTone, file);
}

bool ProfileManager::calendarToneEnabled()
{
    return toneEnabled(CalendarTone);
}

void ProfileManager::setCalendarToneEnabled(bool enabled)
{
    setToneEnabled(CalendarTone, enabled);
}

QString ProfileManager::clockAlarmToneFile()
{
    return toneFile(ClockAlarmTone);
}

void ProfileManager::setClockAlarmToneFile(const QString& file)
{
    setToneFile(ClockAlarmTone, file);
}

bool ProfileManager::clockAlarmToneEnabled()
{
    return toneEnabled(ClockAlarmTone);
}

void ProfileManager::setClockAlarmToneEnabled(bool enabled)
{
    setToneEnabled(ClockAlarmTone, enabled);
}

void ProfileManager::clear()
{
    clearValue(VolumeKey);
    for (const Tone& tone : ToneKeys) {
        clearValue(tone.fileKey);
    }
    for (const Tone& tone : ToneKeys) {
        clearValue(tone.enabledKey);
    }
}

void ProfileManager::clearToneSettings(ToneId id)
{
    if (id == RingerVolume) {
        clearValue(VolumeKey);
    } else if (isToneId(id)) {
        clearValue(tone(id).fileKey);
        clearValue(tone(id).enabledKey);
    } else {
        qCWarning(themeLog) << "void ProfileManager::clearToneSettings(ProfileManager::ToneId)";
        qCWarning(themeLog) << "Unknown tone id!";
    }
}

void ProfileManager::clearTone(ToneId id)
{
    if (id == RingerVolume) {
        clearValue(VolumeKey);
    } else if (isToneId(id)) {
        clearValue(tone(id).fileKey);
    } else {
        qCWarning(themeLog) << "void ProfileManager::clearTone(ProfileManager::ToneId)";
        qCWarning(themeLog) << "Unknown tone id!";
    }
}

void ProfileManager::classBegin()
{
}

void ProfileManager::componentComplete()
{
    if (m_activateProfileOnChange) {
        profile_set_profile(m_profile.constData());
    }
}

bool ProfileManager::isToneId(ToneId id)
{
    return id >= RingerTone && id <= ClockAlarmTone;
}

const ProfileManager::Tone& ProfileManager::tone(ToneId id)
{
    return ToneKeys.at(size_t(id - RingerTone));
}

ProfileManager::ToneCache& ProfileManager::cache(ToneId id)
{
    return m_toneCaches.at(size_t(id - RingerTone));
}

QString ProfileManager::toneFile(ToneId id)
{
    QString& file = cache(id).file;
    if (file.isNull()) {
        const ServiceText text(profile_get_value(m_profile.constData(), tone(id).fileKey));
        file = QString::fromUtf8(text.get());
    }
    return file;
}

// An empty file is always written: the cache may be empty while the service has a file.
void ProfileManager::setToneFile(ToneId id, const QString& file)
{
    QString& cached = cache(id).file;
    if (!file.isEmpty() && file == cached) {
        return;
    }
    cached = file;
    profile_set_value(m_profile.constData(), tone(id).fileKey, file.toUtf8().constData());
    Q_EMIT(this->*tone(id).fileChanged)();
}

bool ProfileManager::toneEnabled(ToneId id)
{
    int& enabled = cache(id).enabled;
    if (enabled < 0) {
        const char* const key = tone(id).enabledKey;
        enabled = profile_get_value_as_bool(m_profile.constData(), key) != 0 ? 1 : 0;
    }
    return enabled != 0;
}

void ProfileManager::setToneEnabled(ToneId id, bool enabled)
{
    int& cached = cache(id).enabled;
    const int flag = enabled ? 1 : 0;
    if (flag == cached) {
        return;
    }
    cached = flag;
    profile_set_value_as_bool(m_profile.constData(), tone(id).enabledKey, flag);
    Q_EMIT(this->*tone(id).enabledChanged)();
}

void ProfileManager::clearValue(const char* key)
{
    profile_set_value(m_profile.constData(), key, "");
}

void ProfileManager::handleProfile(const char* profile, void* self)
{
    currentProfileChangedCallback(profile, static_cast<ProfileManager*>(self));
}

void ProfileManager::handleValue(
    const char* profile, const char* key, const char* value, const char* type, void* self)
{
    updateStateCallBackTrampoline(profile, key, value, type, static_cast<ProfileManager*>(self));
}

void ProfileManager::currentProfileChangedCallback(const char* profile, ProfileManager* self)
{
    Q_UNUSED(profile)
    Q_EMIT self->activeProfileChanged();
}

void ProfileManager::updateStateCallBackTrampoline(
    const char* profile, const char* key, const char* value, const char* type, ProfileManager* self)
{
    self->updateStateCallBack(profile, key, value, type);
}

void ProfileManager::updateStateCallBack(
    const char* profile, const char* key, const char* value, const char* type)
{
    Q_UNUSED(type)
    if (m_profile != profile) {
        return;
    }
    updateCache(key, value);
    Q_EMIT profileUpdated();
}

void ProfileManager::updateCache(const char* key, const char* value)
{
    const QByteArray name(key);
    if (name == VolumeKey) {
        updateVolume(QByteArray(value).toInt());
        return;
    }
    for (int id = RingerTone; id <= ClockAlarmTone; ++id) {
        const auto toneId = static_cast<ToneId>(id);
        if (tone(toneId).fileIsFollowed && name == tone(toneId).fileKey) {
            updateFile(toneId, QString::fromUtf8(value));
        } else if (name == tone(toneId).enabledKey) {
            updateEnabled(toneId, profile_parse_bool(value) != 0 ? 1 : 0);
        }
    }
}

void ProfileManager::updateVolume(int volume)
{
    if (volume == m_ringerVolume) {
        return;
    }
    m_ringerVolume = volume;
    Q_EMIT ringerVolumeChanged();
}

void ProfileManager::updateFile(ToneId id, const QString& file)
{
    QString& cached = cache(id).file;
    if (file == cached) {
        return;
    }
    cached = file;
    Q_EMIT(this->*tone(id).fileChanged)();
}

void ProfileManager::updateEnabled(ToneId id, int enabled)
{
    int& cached = cache(id).enabled;
    if (enabled == cached) {
        return;
    }
    cached = enabled;
    Q_EMIT(this->*tone(id).enabledChanged)();
}
