// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QLatin1String>

#include <array>

/// The names that programs use to call the daemon and to follow its changes: on the session bus, in
/// the key/value store, and in the attributes of a moodset.
namespace MoodsetNames {

/// A text that is known at compile time. With some compilers, QLatin1String's own constructor finds
/// the length only at run time.
template <int Size>
constexpr QLatin1String constant(
    const char (&text)[Size]) // NOLINT(modernize-avoid-c-arrays): a literal is one.
{
    return QLatin1String(text, Size - 1);
}

/// The daemon on the session bus.
namespace Bus {

inline constexpr QLatin1String Service = constant("com.zavro.moodsetd");
inline constexpr QLatin1String Path = constant("/com/zavro/moodsetd");
inline constexpr QLatin1String Interface = constant("com.zavro.moodsetd");

/// The methods. They return nothing, and they do not report failures.
/// @{
inline constexpr QLatin1String IndexFile = constant("indexFile"); ///< s, a file URL
inline constexpr QLatin1String CreateMoodset = constant("createMoodset"); ///< s, a URL
inline constexpr QLatin1String SetMoodset = constant("setMoodset"); ///< s, a URL
inline constexpr QLatin1String Remove = constant("remove"); ///< i, a content type; x, a content id
inline constexpr QLatin1String InstallPackage =
    constant("installPackage"); ///< s, a directory's path
/// i, a content type; x, a content id; a{sv}, attributes
inline constexpr QLatin1String SaveAttributes = constant("saveAttributes");
inline constexpr QLatin1String RefreshMoodsets = constant("refreshMoodsets"); ///< no arguments
/// @}

/// The signal; i, the content type that has changed.
inline constexpr QLatin1String ContentChanged = constant("contentChanged");

} // namespace Bus

/// The keys that the daemon writes when it applies a moodset. All values are texts. This is the
/// order of writing.
namespace ThemeKey {

/// The path of the moodset file or picture that a client has asked for; empty for a picture on the
/// network.
inline constexpr QLatin1String Request =
    constant("/desktop/tuvalo/background/portrait/picture_filename");
inline constexpr QLatin1String HomeWallpaper =
    constant("/desktop/zavro/background/portrait/home_picture_filename");
inline constexpr QLatin1String ApplicationWallpaper =
    constant("/desktop/zavro/background/portrait/app_picture_filename");
/// Colours, as "#aarrggbb".
/// @{
inline constexpr QLatin1String Highlight = constant("/desktop/zavro/theme/color/highlight");
inline constexpr QLatin1String SecondaryHighlight =
    constant("/desktop/zavro/theme/color/secondaryHighlight");
inline constexpr QLatin1String Primary = constant("/desktop/zavro/theme/color/primary");
inline constexpr QLatin1String Secondary = constant("/desktop/zavro/theme/color/secondary");
/// @}
/// The path of the active moodset's file or picture.
inline constexpr QLatin1String ActiveMoodset = constant("/desktop/zavro/theme/active_moodset");

} // namespace ThemeKey

/// The keys that the daemon reads for the size of wallpapers and their blur; see docs/theme.md.
namespace ScreenKey {

inline constexpr QLatin1String Width =
    constant("/vantile/screen/primary/width"); ///< pixels; 540 if not set
inline constexpr QLatin1String Height =
    constant("/vantile/screen/primary/height"); ///< pixels; 960 if not set

} // namespace ScreenKey

/// The attributes of a moodset that `saveAttributes` takes, besides those of its tones.
namespace Attribute {

inline constexpr QLatin1String DisplayName = constant("displayName"); ///< text
inline constexpr QLatin1String Favorite = constant("favorite"); ///< bool
inline constexpr QLatin1String RingerVolume = constant("ringerVolume"); ///< 0 to 100
/// Colours, as "#aarrggbb". The daemon stores what it gets, so a client must check them.
/// @{
inline constexpr QLatin1String HighlightColor = constant("highlightColor");
inline constexpr QLatin1String SecondaryHighlightColor = constant("secondaryHighlightColor");
inline constexpr QLatin1String PrimaryColor = constant("primaryColor");
inline constexpr QLatin1String SecondaryColor = constant("secondaryColor");
/// @}
/// A map from the name of a tone's file, such as "ringerToneFile", to a map with its "url". An
/// empty inner map removes the tone.
inline constexpr QLatin1String Resources = constant("resources");
inline constexpr QLatin1String Url = constant("url");
/// The URL that a downloaded file came from. Only downloads have this attribute.
inline constexpr QLatin1String Source = constant("source");

} // namespace Attribute

/// A kind of tone. Its index in Tones is the number of its bit in MoodsetData::enabledSounds.
struct Tone
{
    QLatin1String name;
    /// The name of the tone's file in the resources of a moodset.
    QLatin1String file;
    /// The attribute that enables the tone, a bool.
    QLatin1String enabled;
};

inline constexpr std::array<Tone, 7> Tones{{
    {constant("ringerTone"), constant("ringerToneFile"), constant("ringerToneEnabled")},
    {constant("messageTone"), constant("messageToneFile"), constant("messageToneEnabled")},
    {constant("mailTone"), constant("mailToneFile"), constant("mailToneEnabled")},
    {constant("internetCallTone"), constant("internetCallToneFile"),
     constant("internetCallToneEnabled")},
    {constant("chatTone"), constant("chatToneFile"), constant("chatToneEnabled")},
    {constant("calendarTone"), constant("calendarToneFile"), constant("calendarToneEnabled")},
    {constant("clockAlarmTone"), constant("clockAlarmToneFile"), constant("clockAlarmToneEnabled")},
}};
static_assert(Tones.back().file.size() > 0, "a tone has no names");

} // namespace MoodsetNames
