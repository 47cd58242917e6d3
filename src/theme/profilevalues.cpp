// SPDX-License-Identifier: BSD-3-Clause
#include "profilevalues.h"

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

QByteArray _profileName(ProfileValues::Profile profile)
{
    switch (profile) {
    case ProfileValues::Moodset:
        return QByteArrayLiteral("moodset");
    case ProfileValues::General:
        return QByteArrayLiteral("general");
    case ProfileValues::Silent:
        return QByteArrayLiteral("silent");
    case ProfileValues::Unknown:
        break;
    }
    qCWarning(themeLog) << "QByteArray _profileName(ProfileManager::Profile)";
    qCWarning(themeLog) << "Unknown profile";
    return {};
}

ProfileValues::Profile profileFromName(const QByteArray& name)
{
    if (name == "moodset") {
        return ProfileValues::Moodset;
    }
    if (name == "general") {
        return ProfileValues::General;
    }
    if (name == "silent") {
        return ProfileValues::Silent;
    }
    return ProfileValues::Unknown;
}

} // namespace

int ProfileValues::s_instanceCounter = 0;

const std::array<ProfileValues::Tone, ProfileValues::ToneCount> ProfileValues::ToneKeys{{
    {"ringing.alert.tone", "ringing.alert.enabled", &ProfileValues::ringerToneFileChanged,
     &ProfileValues::ringerToneEnabledChanged, true},
    {"sms.alert.tone", "sms.alert.enabled", &ProfileValues::messageToneFileChanged,
     &ProfileValues::messageToneEnabledChanged, true},
    // Only the file of the chat tone does not follow the service.
    {"im.alert.tone", "im.alert.enabled", &ProfileValues::chatToneFileChanged,
     &ProfileValues::chatToneEnabledChanged, false},
    {"email.alert.tone", "email.alert.enabled", &ProfileValues::mailToneFileChanged,
     &ProfileValues::mailToneEnabledChanged, true},
    {"voip.alert.tone", "voip.alert.enabled", &ProfileValues::internetCallToneFileChanged,
     &ProfileValues::internetCallToneEnabledChanged, true},
    {"calendar.alert.tone", "calendar.alert.enabled", &ProfileValues::calendarToneFileChanged,
     &ProfileValues::calendarToneEnabledChanged, true},
    {"clock.alert.tone", "clock.alert.enabled", &ProfileValues::clockAlarmToneFileChanged,
     &ProfileValues::clockAlarmToneEnabledChanged, true},
}};

ProfileValues::ProfileValues(QObject* parent)
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

ProfileValues::~ProfileValues()
{
    --s_instanceCounter;
    if (s_instanceCounter == 0) {
        profile_tracker_quit();
    }
    profile_track_remove_profile_cb(&handleProfile, this);
    profile_track_remove_active_cb(&handleValue, this);
    profile_track_remove_change_cb(&handleValue, this);
}

ProfileValues::Profile ProfileValues::profile() const
{
    return profileFromName(m_profile);
}

void ProfileValues::setProfile(Profile profile)
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

void ProfileValues::activate()
{
    profile_set_profile(m_profile.constData());
}

ProfileValues::Profile ProfileValues::activeProfile() const
{
    const ServiceText name(profile_get_profile());
    return profileFromName(name.get());
}

void ProfileValues::setActiveProfile(Profile profile)
{
    profile_set_profile(_profileName(profile).constData());
}

bool ProfileValues::activateProfileOnChange() const
{
    return m_activateProfileOnChange;
}

void ProfileValues::setActivateProfileOnChange(bool activate)
{
    if (activate == m_activateProfileOnChange) {
        return;
    }
    m_activateProfileOnChange = activate;
    Q_EMIT activateProfileOnChangeChanged();
}

int ProfileValues::ringerVolume()
{
    if (m_ringerVolume < 0) {
        m_ringerVolume = profile_get_value_as_int(m_profile.constData(), VolumeKey);
        Q_EMIT ringerVolumeChanged();
    }
    return m_ringerVolume;
}

void ProfileValues::setRingerVolume(int volume)
{
    if (volume == m_ringerVolume) {
        return;
    }
    m_ringerVolume = volume;
    profile_set_value_as_int(m_profile.constData(), VolumeKey, volume);
    Q_EMIT ringerVolumeChanged();
}

QString ProfileValues::ringerToneFile()
{
    return toneFile(RingerTone);
}

void ProfileValues::setRingerToneFile(const QString& file)
{
    setToneFile(RingerTone, file);
}

bool ProfileValues::ringerToneEnabled()
{
    return toneEnabled(RingerTone);
}

void ProfileValues::setRingerToneEnabled(bool enabled)
{
    setToneEnabled(RingerTone, enabled);
}

QString ProfileValues::messageToneFile()
{
    return toneFile(MessageTone);
}

void ProfileValues::setMessageToneFile(const QString& file)
{
    setToneFile(MessageTone, file);
}

bool ProfileValues::messageToneEnabled()
{
    return toneEnabled(MessageTone);
}

void ProfileValues::setMessageToneEnabled(bool enabled)
{
    setToneEnabled(MessageTone, enabled);
}

QString ProfileValues::chatToneFile()
{
    return toneFile(ChatTone);
}

void ProfileValues::setChatToneFile(const QString& file)
{
    setToneFile(ChatTone, file);
}

bool ProfileValues::chatToneEnabled()
{
    return toneEnabled(ChatTone);
}

void ProfileValues::setChatToneEnabled(bool enabled)
{
    setToneEnabled(ChatTone, enabled);
}

QString ProfileValues::mailToneFile()
{
    return toneFile(MailTone);
}

void ProfileValues::setMailToneFile(const QString& file)
{
    setToneFile(MailTone, file);
}

bool ProfileValues::mailToneEnabled()
{
    return toneEnabled(MailTone);
}

void ProfileValues::setMailToneEnabled(bool enabled)
{
    setToneEnabled(MailTone, enabled);
}

QString ProfileValues::internetCallToneFile()
{
    return toneFile(InternetCallTone);
}

void ProfileValues::setInternetCallToneFile(const QString& file)
{
    setToneFile(InternetCallTone, file);
}

bool ProfileValues::internetCallToneEnabled()
{
    return toneEnabled(InternetCallTone);
}

void ProfileValues::setInternetCallToneEnabled(bool enabled)
{
    setToneEnabled(InternetCallTone, enabled);
}

QString ProfileValues::calendarToneFile()
{
    return toneFile(CalendarTone);
}

void ProfileValues::setCalendarToneFile(const QString& file)
{
    setToneFile(CalendarTone, file);
}

bool ProfileValues::calendarToneEnabled()
{
    return toneEnabled(CalendarTone);
}

void ProfileValues::setCalendarToneEnabled(bool enabled)
{
    setToneEnabled(CalendarTone, enabled);
}

QString ProfileValues::clockAlarmToneFile()
{
    return toneFile(ClockAlarmTone);
}

void ProfileValues::setClockAlarmToneFile(const QString& file)
{
    setToneFile(ClockAlarmTone, file);
}

bool ProfileValues::clockAlarmToneEnabled()
{
    return toneEnabled(ClockAlarmTone);
}

void ProfileValues::setClockAlarmToneEnabled(bool enabled)
{
    setToneEnabled(ClockAlarmTone, enabled);
}

void ProfileValues::clear()
{
    clearValue(VolumeKey);
    for (const Tone& tone : ToneKeys) {
        clearValue(tone.fileKey);
    }
    for (const Tone& tone : ToneKeys) {
        clearValue(tone.enabledKey);
    }
}

void ProfileValues::clearToneSettings(ToneId id)
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

void ProfileValues::clearTone(ToneId id)
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

bool ProfileValues::isToneId(ToneId id)
{
    return id >= RingerTone && id <= ClockAlarmTone;
}

const ProfileValues::Tone& ProfileValues::tone(ToneId id)
{
    return ToneKeys.at(size_t(id - RingerTone));
}

ProfileValues::ToneCache& ProfileValues::cache(ToneId id)
{
    return m_toneCaches.at(size_t(id - RingerTone));
}

QString ProfileValues::toneFile(ToneId id)
{
    QString& file = cache(id).file;
    if (file.isNull()) {
        const ServiceText text(profile_get_value(m_profile.constData(), tone(id).fileKey));
        file = QString::fromUtf8(text.get());
    }
    return file;
}

// An empty file is always written: the cache may be empty while the service has a file.
void ProfileValues::setToneFile(ToneId id, const QString& file)
{
    QString& cached = cache(id).file;
    if (!file.isEmpty() && file == cached) {
        return;
    }
    cached = file;
    profile_set_value(m_profile.constData(), tone(id).fileKey, file.toUtf8().constData());
    Q_EMIT(this->*tone(id).fileChanged)();
}

bool ProfileValues::toneEnabled(ToneId id)
{
    int& enabled = cache(id).enabled;
    if (enabled < 0) {
        const char* const key = tone(id).enabledKey;
        enabled = profile_get_value_as_bool(m_profile.constData(), key) != 0 ? 1 : 0;
    }
    return enabled != 0;
}

void ProfileValues::setToneEnabled(ToneId id, bool enabled)
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

void ProfileValues::clearValue(const char* key)
{
    profile_set_value(m_profile.constData(), key, "");
}

void ProfileValues::handleProfile(const char* profile, void* self)
{
    currentProfileChangedCallback(profile, static_cast<ProfileValues*>(self));
}

void ProfileValues::handleValue(
    const char* profile, const char* key, const char* value, const char* type, void* self)
{
    updateStateCallBackTrampoline(profile, key, value, type, static_cast<ProfileValues*>(self));
}

void ProfileValues::currentProfileChangedCallback(const char* profile, ProfileValues* self)
{
    Q_UNUSED(profile)
    Q_EMIT self->activeProfileChanged();
}

void ProfileValues::updateStateCallBackTrampoline(
    const char* profile, const char* key, const char* value, const char* type, ProfileValues* self)
{
    self->updateStateCallBack(profile, key, value, type);
}

void ProfileValues::updateStateCallBack(
    const char* profile, const char* key, const char* value, const char* type)
{
    Q_UNUSED(type)
    if (m_profile != profile) {
        return;
    }
    updateCache(key, value);
    Q_EMIT profileUpdated();
}

void ProfileValues::updateCache(const char* key, const char* value)
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

void ProfileValues::updateVolume(int volume)
{
    if (volume == m_ringerVolume) {
        return;
    }
    m_ringerVolume = volume;
    Q_EMIT ringerVolumeChanged();
}

void ProfileValues::updateFile(ToneId id, const QString& file)
{
    QString& cached = cache(id).file;
    if (file == cached) {
        return;
    }
    cached = file;
    Q_EMIT(this->*tone(id).fileChanged)();
}

void ProfileValues::updateEnabled(ToneId id, int enabled)
{
    int& cached = cache(id).enabled;
    if (enabled == cached) {
        return;
    }
    cached = enabled;
    Q_EMIT(this->*tone(id).enabledChanged)();
}
