// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodset/tones.h"
#include "profilemanager.h"

#include <array>

/// The keys of a moodset's tone in the tone profile.
struct ToneRow
{
    /// The key of the tone in the moodset's resources and in moodset files.
    const char* key;
    ProfileManager::ToneId id;
    void (ProfileManager::*setFile)(const QString& file);
    void (ProfileManager::*setEnabled)(bool enabled);
};

/// The tones in the order of their bits in MoodsetData::enabledSounds, which differs from the order
/// of the ids.
constexpr std::array<ToneRow, Tones::Count> ToneTable{{
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
static_assert(ToneTable.back().key != nullptr, "a tone has no row");
