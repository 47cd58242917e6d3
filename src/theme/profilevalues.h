// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <array>

/// The ringer's volume and the alert tones of one profile of the profile service, as properties.
/// Values that were read are cached, new values are written to the service at once, and changes by
/// other programs are followed. Main thread only.
///
/// The file of a tone is a local path; it is empty if the service chooses the file. If the object
/// changes to another profile, the cached values stay until they are set or the service reports a
/// change.
///
/// This is all that the daemon needs. ProfileManager adds what QML needs.
class ProfileValues : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Profile profile READ profile WRITE setProfile NOTIFY profileChanged)
    Q_PROPERTY(
        Profile activeProfile READ activeProfile WRITE setActiveProfile NOTIFY activeProfileChanged)
    Q_PROPERTY(int ringerVolume READ ringerVolume WRITE setRingerVolume NOTIFY ringerVolumeChanged)
    Q_PROPERTY(QString ringerToneFile READ ringerToneFile WRITE setRingerToneFile NOTIFY
                   ringerToneFileChanged)
    Q_PROPERTY(QString messageToneFile READ messageToneFile WRITE setMessageToneFile NOTIFY
                   messageToneFileChanged)
    Q_PROPERTY(
        QString chatToneFile READ chatToneFile WRITE setChatToneFile NOTIFY chatToneFileChanged)
    Q_PROPERTY(
        QString mailToneFile READ mailToneFile WRITE setMailToneFile NOTIFY mailToneFileChanged)
    Q_PROPERTY(QString internetCallToneFile READ internetCallToneFile WRITE setInternetCallToneFile
                   NOTIFY internetCallToneFileChanged)
    Q_PROPERTY(QString calendarToneFile READ calendarToneFile WRITE setCalendarToneFile NOTIFY
                   calendarToneFileChanged)
    Q_PROPERTY(QString clockAlarmToneFile READ clockAlarmToneFile WRITE setClockAlarmToneFile NOTIFY
                   clockAlarmToneFileChanged)
    Q_PROPERTY(bool ringerToneEnabled READ ringerToneEnabled WRITE setRingerToneEnabled NOTIFY
                   ringerToneEnabledChanged)
    Q_PROPERTY(bool messageToneEnabled READ messageToneEnabled WRITE setMessageToneEnabled NOTIFY
                   messageToneEnabledChanged)
    Q_PROPERTY(bool chatToneEnabled READ chatToneEnabled WRITE setChatToneEnabled NOTIFY
                   chatToneEnabledChanged)
    Q_PROPERTY(bool mailToneEnabled READ mailToneEnabled WRITE setMailToneEnabled NOTIFY
                   mailToneEnabledChanged)
    Q_PROPERTY(bool internetCallToneEnabled READ internetCallToneEnabled WRITE
                   setInternetCallToneEnabled NOTIFY internetCallToneEnabledChanged)
    Q_PROPERTY(bool calendarToneEnabled READ calendarToneEnabled WRITE setCalendarToneEnabled NOTIFY
                   calendarToneEnabledChanged)
    Q_PROPERTY(bool clockAlarmToneEnabled READ clockAlarmToneEnabled WRITE setClockAlarmToneEnabled
                   NOTIFY clockAlarmToneEnabledChanged)
    Q_PROPERTY(bool activateProfileOnChange READ activateProfileOnChange WRITE
                   setActivateProfileOnChange NOTIFY activateProfileOnChangeChanged)
public:
    enum Profile : int { Moodset = 0, General = 1, Silent = 2, Unknown = 3 };
    Q_ENUM(Profile)

    enum ToneId : int {
        RingerVolume = 0,
        RingerTone = 1,
        MessageTone = 2,
        ChatTone = 3,
        MailTone = 4,
        InternetCallTone = 5,
        CalendarTone = 6,
        ClockAlarmTone = 7
    };
    Q_ENUM(ToneId)

    /// Shows the profile "general".
    explicit ProfileValues(QObject* parent = nullptr);
    ~ProfileValues() override;

    /// The profile that this object shows. Unknown if its name is none of the three. Setting
    /// Unknown logs two warnings and shows the profile with the empty name, which has no values.
    Profile profile() const;
    void setProfile(Profile profile);

    /// The profile that is active on the phone. Unknown if its name is none of the three.
    Profile activeProfile() const;
    void setActiveProfile(Profile profile);

    /// Whether setProfile() also makes the profile the active one.
    bool activateProfileOnChange() const;
    void setActivateProfileOnChange(bool activate);

    /// The volume, normally from 0 to 100. The first read, and each read of a negative value, also
    /// emits ringerVolumeChanged().
    int ringerVolume();
    void setRingerVolume(int volume);

    QString ringerToneFile();
    void setRingerToneFile(const QString& file);
    bool ringerToneEnabled();
    void setRingerToneEnabled(bool enabled);

    QString messageToneFile();
    void setMessageToneFile(const QString& file);
    bool messageToneEnabled();
    void setMessageToneEnabled(bool enabled);

    QString chatToneFile();
    void setChatToneFile(const QString& file);
    bool chatToneEnabled();
    void setChatToneEnabled(bool enabled);

    QString mailToneFile();
    void setMailToneFile(const QString& file);
    bool mailToneEnabled();
    void setMailToneEnabled(bool enabled);

    QString internetCallToneFile();
    void setInternetCallToneFile(const QString& file);
    bool internetCallToneEnabled();
    void setInternetCallToneEnabled(bool enabled);

    QString calendarToneFile();
    void setCalendarToneFile(const QString& file);
    bool calendarToneEnabled();
    void setCalendarToneEnabled(bool enabled);

    QString clockAlarmToneFile();
    void setClockAlarmToneFile(const QString& file);
    bool clockAlarmToneEnabled();
    void setClockAlarmToneEnabled(bool enabled);

    /// Clears all fifteen values of the profile, so that the service's defaults apply.
    Q_INVOKABLE void clear();

    /// Clears the volume, or a tone's file and its enabled flag. An unknown id logs two warnings.
    Q_INVOKABLE void clearToneSettings(ToneId id);

    /// Clears the volume, or a tone's file. An unknown id logs two warnings.
    Q_INVOKABLE void clearTone(ToneId id);

Q_SIGNALS:
    void profileChanged();
    void ringerVolumeChanged();
    void ringerToneFileChanged();
    void messageToneFileChanged();
    /// Never emitted: the volume of messages is not a property.
    void messageToneVolumeChanged();
    void internetCallToneFileChanged();
    void chatToneFileChanged();
    void mailToneFileChanged();
    void calendarToneFileChanged();
    void clockAlarmToneFileChanged();
    void ringerToneEnabledChanged();
    void messageToneEnabledChanged();
    void chatToneEnabledChanged();
    void mailToneEnabledChanged();
    void internetCallToneEnabledChanged();
    void calendarToneEnabledChanged();
    void clockAlarmToneEnabledChanged();
    void activeProfileChanged();
    void activateProfileOnChangeChanged();
    /// Any value of this object's profile has changed. Emitted twice if the profile is the active
    /// one.
    void profileUpdated();

protected:
    /// Makes the profile that this object shows the active one.
    void activate();

private:
    using ChangeSignal = void (ProfileValues::*)();

    /// The keys of a tone in the service, and the signals of its properties.
    struct Tone
    {
        const char* fileKey;
        const char* enabledKey;
        ChangeSignal fileChanged;
        ChangeSignal enabledChanged;
        bool fileIsFollowed;
    };

    struct ToneCache
    {
        QString file; // null if it was not read yet
        int enabled = -1; // 0 or 1, or -1 if it was not read yet
    };

    static constexpr int ToneCount = 7;

    /// In the order of ToneId, from RingerTone on.
    static const std::array<Tone, ToneCount> ToneKeys;

    static bool isToneId(ToneId id);
    static const Tone& tone(ToneId id);
    ToneCache& cache(ToneId id);

    QString toneFile(ToneId id);
    void setToneFile(ToneId id, const QString& file);
    bool toneEnabled(ToneId id);
    void setToneEnabled(ToneId id, bool enabled);
    void clearValue(const char* key);

    static void currentProfileChangedCallback(const char* profile, ProfileValues* self);
    static void updateStateCallBackTrampoline(
        const char* profile, const char* key, const char* value, const char* type,
        ProfileValues* self);
    static void handleProfile(const char* profile, void* self);
    static void handleValue(
        const char* profile, const char* key, const char* value, const char* type, void* self);
    void updateStateCallBack(
        const char* profile, const char* key, const char* value, const char* type);
    void updateCache(const char* key, const char* value);
    void updateVolume(int volume);
    void updateFile(ToneId id, const QString& file);
    void updateEnabled(ToneId id, int enabled);

    static int s_instanceCounter;

    QByteArray m_profile = QByteArrayLiteral("general");
    int m_ringerVolume = -1; // not read yet
    bool m_activateProfileOnChange = false;
    std::array<ToneCache, ToneCount> m_toneCaches;
};
