// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodset/tones.h"
#include "profilemanager.h"

#include <QLatin1String>

#include <array>

/// Where a moodset's tone goes in the tone profile.
struct ToneRow
{
    /// The tone's key among the moodset's resources and in moodset files.
    QLatin1String key;
    ProfileManager::ToneId id;
    void (ProfileManager::*setFile)(const QString& file);
    void (ProfileManager::*setEnabled)(bool enabled);
};

/// The tones by their bits in MoodsetData::enabledSounds, which is not the order of the ids.
constexpr std::array<ToneRow, Tones::Count> toneTable{{
    {QLatin1String("ringerToneFile"), ProfileManager::RingerTone,
     &ProfileManager::setRingerToneFile, &ProfileManager::setRingerToneEnabled},
    {QLatin1String("messageToneFile"), ProfileManager::MessageTone,
     &ProfileManager::setMessageToneFile, &ProfileManager::setMessageToneEnabled},
    {QLatin1String("mailToneFile"), ProfileManager::MailTone, &ProfileManager::setMailToneFile,
     &ProfileManager::setMailToneEnabled},
    {QLatin1String("internetCallToneFile"), ProfileManager::InternetCallTone,
     &ProfileManager::setInternetCallToneFile, &ProfileManager::setInternetCallToneEnabled},
    {QLatin1String("chatToneFile"), ProfileManager::ChatTone, &ProfileManager::setChatToneFile,
     &ProfileManager::setChatToneEnabled},
    {QLatin1String("calendarToneFile"), ProfileManager::CalendarTone,
     &ProfileManager::setCalendarToneFile, &ProfileManager::setCalendarToneEnabled},
    {QLatin1String("clockAlarmToneFile"), ProfileManager::ClockAlarmTone,
     &ProfileManager::setClockAlarmToneFile, &ProfileManager::setClockAlarmToneEnabled},
}};
