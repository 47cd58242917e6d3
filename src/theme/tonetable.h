// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodset/tones.h"
#include "profilemanager.h"

#include <array>

/// Where a moodset's tone goes in the tone profile.
struct ToneRow
{
    /// The tone's key among the moodset's resources and in moodset files.
    const char* key;
    ProfileManager::ToneId id;
    void (ProfileManager::*setFile)(const QString& file);
    void (ProfileManager::*setEnabled)(bool enabled);
};

/// The tones by their bits in MoodsetData::enabledSounds, which is not the order of the ids.
constexpr std::array<ToneRow, Tones::Count> toneTable{{
    {"ringerToneFile", ProfileManager::RingerTone, &ProfileManager::setRingerToneFile,
     &ProfileManager::setRingerToneEnabled},
    {"messageToneFile", ProfileManager::MessageTone, &ProfileManager::setMessageToneFile,
     &ProfileManager::setMessageToneEnabled},
    {"mailToneFile", ProfileManager::MailTone, &ProfileManager::setMailToneFile,
     &ProfileManager::setMailToneEnabled},
    {"internetCallToneFile", ProfileManager::InternetCallTone,
     &ProfileManager::setInternetCallToneFile, &ProfileManager::setInternetCallToneEnabled},
    {"chatToneFile", ProfileManager::ChatTone, &ProfileManager::setChatToneFile,
     &ProfileManager::setChatToneEnabled},
    {"calendarToneFile", ProfileManager::CalendarTone, &ProfileManager::setCalendarToneFile,
     &ProfileManager::setCalendarToneEnabled},
    {"clockAlarmToneFile", ProfileManager::ClockAlarmTone, &ProfileManager::setClockAlarmToneFile,
     &ProfileManager::setClockAlarmToneEnabled},
}};
