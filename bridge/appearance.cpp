// SPDX-License-Identifier: BSD-3-Clause
#include "appearance.h"

#include <mgconfitem.h>
#include <moodsetnames.h>
#include <profile.h>

#include <cstdlib>
#include <memory>

namespace {

struct TextFree
{
    void operator()(char* text) const { std::free(text); }
};

QString takeText(char* text)
{
    const std::unique_ptr<char, TextFree> owner(text);
    return QString::fromUtf8(text);
}

QString textOf(const QLatin1String& key)
{
    return MGConfItem(key).value().toString();
}

std::optional<Argb> colorOf(const QLatin1String& key)
{
    return Argb::fromText(textOf(key));
}

struct ToneKeys
{
    const char* file;
    const char* enabled;
};

/// In the order of ToneUse.
constexpr std::array<ToneKeys, Sound::ToneCount> AllToneKeys{{
    {"ringing.alert.tone", "ringing.alert.enabled"},
    {"sms.alert.tone", "sms.alert.enabled"},
    {"im.alert.tone", "im.alert.enabled"},
    {"email.alert.tone", "email.alert.enabled"},
    {"voip.alert.tone", "voip.alert.enabled"},
    {"calendar.alert.tone", "calendar.alert.enabled"},
    {"clock.alert.tone", "clock.alert.enabled"},
}};

} // namespace

Look Look::read()
{
    namespace ThemeKey = MoodsetNames::ThemeKey;
    Look look;
    look.moodset = textOf(ThemeKey::ActiveMoodset);
    look.wallpaper = textOf(ThemeKey::HomeWallpaper);
    look.applicationWallpaper = textOf(ThemeKey::ApplicationWallpaper);
    look.highlight = colorOf(ThemeKey::Highlight);
    look.secondaryHighlight = colorOf(ThemeKey::SecondaryHighlight);
    look.primary = colorOf(ThemeKey::Primary);
    look.secondary = colorOf(ThemeKey::Secondary);
    return look;
}

// The daemon always sets the tones of the profile "general".
Sound Sound::read()
{
    constexpr const char* toneProfile = "general";
    Sound sound;
    sound.profile = takeText(profile_get_profile());
    sound.volume = profile_get_value_as_int(toneProfile, "ringing.alert.volume");
    for (size_t i = 0; i < AllToneKeys.size(); ++i) {
        sound.tones.at(i).file = takeText(profile_get_value(toneProfile, AllToneKeys.at(i).file));
        const QString enabled = takeText(profile_get_value(toneProfile, AllToneKeys.at(i).enabled));
        sound.tones.at(i).isEnabled =
            enabled.isEmpty() || profile_parse_bool(enabled.toUtf8().constData()) != 0;
    }
    return sound;
}
