// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "argb.h"

#include <QString>

#include <array>
#include <optional>

/// The look of the system, as the keys of the daemon describe it.
struct Look
{
    /// Reads the keys. The wallpaper is then the file that the daemon has made.
    static Look read();

    /// The path of the active moodset's file or picture; empty before the first moodset.
    QString moodset;
    /// The home wallpaper, and the picture that replaces it if few programs can show it.
    QString wallpaper;
    QString applicationWallpaper;
    /// Why there is no wallpaper, in one sentence; empty if there is one.
    QString problem;
    std::optional<Argb> highlight;
    std::optional<Argb> secondaryHighlight;
    std::optional<Argb> primary;
    std::optional<Argb> secondary;
};

/// The tones of the profile service.
enum class ToneUse { Ringing, Message, Chat, Mail, InternetCall, Calendar, Alarm };

struct Tone
{
    QString file;
    bool isEnabled = true;
};

/// The sounds of the active profile, as the profile service describes them.
struct Sound
{
    static constexpr int ToneCount = 7;

    static Sound read();

    const Tone& tone(ToneUse use) const { return tones.at(size_t(use)); }

    QString profile;
    int volume = 0; ///< the ringer volume, 0 to 100
    std::array<Tone, ToneCount> tones; ///< in the order of ToneUse
};

/// What adapters set.
struct Appearance
{
    Look look;
    Sound sound;
};
