// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "argb.h"

#include <QString>

#include <array>
#include <optional>

/// What the daemon's keys say of the look of the system.
struct Look
{
    /// Reads the keys. The wallpaper is the daemon's own file then.
    static Look read();

    /// The path of the active moodset's file or picture; empty before the first moodset.
    QString moodset;
    /// The home wallpaper, and the picture that stands in for one that few programs can show.
    QString wallpaper;
    QString applicationWallpaper;
    /// Why there is no wallpaper, in one sentence; empty if there is one.
    QString problem;
    std::optional<Argb> highlight;
    std::optional<Argb> secondaryHighlight;
    std::optional<Argb> primary;
    std::optional<Argb> secondary;
};

/// The tones that the profile service knows.
enum class ToneUse { Ringing, Message, Chat, Mail, InternetCall, Calendar, Alarm };

struct Tone
{
    QString file;
    bool isEnabled = true;
};

/// What the profile service says of sounds, for the active profile.
struct Sound
{
    static constexpr int ToneCount = 7;

    static Sound read();

    const Tone& tone(ToneUse use) const { return tones.at(size_t(use)); }

    QString profile;
    int volume = 0; ///< of the ringer, 0 to 100
    std::array<Tone, ToneCount> tones; ///< in the order of ToneUse
};

/// What adapters hand on.
struct Appearance
{
    Look look;
    Sound sound;
};
