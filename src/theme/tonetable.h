// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodset/tones.h"
#include "profilevalues.h"

#include <array>

/// The keys of a moodset's tone in the tone profile.
struct ToneRow
{
    /// The key of the tone in the moodset's resources and in moodset files.
    const char* key;
    ProfileValues::ToneId id;
    void (ProfileValues::*setFile)(const QString& file);
    void (ProfileValues::*setEnabled)(bool enabled);
};

/// The tones in the order of their bits in MoodsetData::enabledSounds, which differs from the order
/// of the ids.
constexpr std::array<ToneRow, Tones::Count> ToneTable{{
    {"ringerToneFile", ProfileValues::RingerTone, &ProfileValues::setRingerToneFile,
     &ProfileValues::setRingerToneEnabled},
    {"messageToneFile", ProfileValues::MessageTone, &ProfileValues::setMessageToneFile,
     &ProfileValues::setMessageToneEnabled},
    {"mailToneFile", ProfileValues::MailTone, &ProfileValues::setMailToneFile,
     &ProfileValues::setMailToneEnabled},
    {"internetCallToneFile", ProfileValues::InternetCallTone,
     &ProfileValues::setInternetCallToneFile, &ProfileValues::setInternetCallToneEnabled},
    {"chatToneFile", ProfileValues::ChatTone, &ProfileValues::setChatToneFile,
     &ProfileValues::setChatToneEnabled},
    {"calendarToneFile", ProfileValues::CalendarTone, &ProfileValues::setCalendarToneFile,
     &ProfileValues::setCalendarToneEnabled},
    {"clockAlarmToneFile", ProfileValues::ClockAlarmTone, &ProfileValues::setClockAlarmToneFile,
     &ProfileValues::setClockAlarmToneEnabled},
}};
static_assert(ToneTable.back().key != nullptr, "a tone has no row");
