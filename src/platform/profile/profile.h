/* SPDX-License-Identifier: BSD-3-Clause */
#pragma once

/// The user's profiles: named sets of text values, one of which is the active one.
///
/// They are stored in the key/value store. The key "/com/zavro/profile/P/K" has the value K of the
/// profile P, and "/com/zavro/profile/active" has the name of the active profile ("general" if
/// unset). If a profile does not have a value, or has an empty text, the value of the profile
/// "fallback" is used. If the store does not have that either, the value comes from the file
/// "moodsetd/profile-defaults" in the first data directory that has this file. The names of
/// profiles and keys are non-empty texts without "/".
///
/// Main thread only. The application object must exist. Texts are NUL-terminated UTF-8. Functions
/// that return `int` only to report success return 0, or -1 for a malformed name or a value that
/// cannot be stored. Writes return at once, and are stored as those of MGConfItem are.

#ifdef __cplusplus
extern "C" {
#endif

// C programs include this file, too.
// NOLINTBEGIN(modernize-use-using)

/// Called with the name of the profile that has become active.
typedef void (*profile_track_profile_fn)(const char* profile, void* user_data);

/// Called with the text of a value that has changed, or null if there is no value now. `type` is
/// always empty.
typedef void (*profile_track_value_fn)(
    const char* profile, const char* key, const char* value, const char* type, void* user_data);

/// Called with the user data when a callback is removed. May be null.
typedef void (*profile_user_data_free_fn)(void* user_data);

// NOLINTEND(modernize-use-using)

/// Starts and stops the tracker. While it runs, the event loop calls the callbacks for changes by
/// this process and by others, once for each difference since the last time. Starting it twice has
/// the same effect as once.
int profile_tracker_init(void);
void profile_tracker_quit(void);

/// Has no effect: the store is always connected when it can be.
void profile_connection_enable_autoconnect(void);

/// The profile callback is called when another profile becomes active, the change callback when a
/// value of any profile changes, and the active callback in addition when this is a value of the
/// active profile. When another profile becomes active, the last two are not called. Callbacks may
/// be added and removed at any time, even inside a callback.
void profile_track_add_profile_cb(
    profile_track_profile_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_active_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_change_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);

/// Removes one callback that was added with these arguments. Returns -1 if there is none.
int profile_track_remove_profile_cb(profile_track_profile_fn callback, void* user_data);
int profile_track_remove_active_cb(profile_track_value_fn callback, void* user_data);
int profile_track_remove_change_cb(profile_track_value_fn callback, void* user_data);

/// The name of the active profile. Release it with free().
char* profile_get_profile(void);

/// Makes `profile` the active profile. It need not have any values.
int profile_set_profile(const char* profile);

/// A value, or null if neither the profile nor "fallback" nor the installed defaults have one.
/// Release it with free().
char* profile_get_value(const char* profile, const char* key);

/// Sets the profile's own value, or clears it if `value` is empty or null.
int profile_set_value(const char* profile, const char* key, const char* value);

/// A value as a decimal number. A missing value, or one that is not a number, is read as 0.
int profile_get_value_as_int(const char* profile, const char* key);
int profile_set_value_as_int(const char* profile, const char* key, int value);

/// A value as "On" or "Off". It is read as profile_parse_bool() does.
int profile_get_value_as_bool(const char* profile, const char* key);
int profile_set_value_as_bool(const char* profile, const char* key, int value);

/// 1 for "On", "True", "Yes" and "1" in any case, 0 for any other text and for null.
int profile_parse_bool(const char* text);

#ifdef __cplusplus
}
#endif
