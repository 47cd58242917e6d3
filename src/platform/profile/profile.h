/* SPDX-License-Identifier: BSD-3-Clause */
#pragma once

/// The user's profiles: named sets of text values, one of which is the active one.
///
/// They lie in the key/value store, a value of the profile P under the key K at
/// "/com/zavro/profile/P/K", the name of the active profile at "/com/zavro/profile/active"
/// ("general" if unset). A value that a profile does not have, or has as an empty text, is that of
/// the profile "fallback". Names of profiles and keys are non-empty texts without "/".
///
/// Main thread only, after the application object is made. Texts are NUL-terminated UTF-8. The
/// functions that return `int` for no other use return 0 if all went well, -1 for a malformed name
/// or a value that cannot be stored. Writes return at once and last as those of MGConfItem do.

#ifdef __cplusplus
extern "C" {
#endif

// C reads this file too.
// NOLINTBEGIN(modernize-use-using)

/// Called with the name of the profile that has become the active one.
typedef void (*profile_track_profile_fn)(const char* profile, void* user_data);

/// Called with the text of a value that has changed, null if there is none now. `type` is always
/// empty.
typedef void (*profile_track_value_fn)(
    const char* profile, const char* key, const char* value, const char* type, void* user_data);

/// Called with the user data when a callback is removed; may be null.
typedef void (*profile_user_data_free_fn)(void* user_data);

// NOLINTEND(modernize-use-using)

/// Starts and stops the tracker. While it runs, the callbacks come from the event loop, for changes
/// made by this process and by others, once for each difference since the last time. Starting it
/// twice is starting it once.
int profile_tracker_init(void);
void profile_tracker_quit(void);

/// Has no effect: the store is always connected when it can be.
void profile_connection_enable_autoconnect(void);

/// The profile callback is for a switch of the active profile, the change callback for a value of
/// any profile, the active callback besides for one of the active profile. A switch alone calls
/// neither of the last two. Callbacks may be added and removed at any time, inside a callback too.
void profile_track_add_profile_cb(
    profile_track_profile_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_active_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_change_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);

/// Removes one callback that was added with these arguments; returns -1 if there is none.
int profile_track_remove_profile_cb(profile_track_profile_fn callback, void* user_data);
int profile_track_remove_active_cb(profile_track_value_fn callback, void* user_data);
int profile_track_remove_change_cb(profile_track_value_fn callback, void* user_data);

/// The name of the active profile; to be released with free().
char* profile_get_profile(void);

/// Makes `profile` the active one. It need not have any value.
int profile_set_profile(const char* profile);

/// A value, to be released with free(), or null if neither the profile nor "fallback" has one.
char* profile_get_value(const char* profile, const char* key);

/// Sets a value of the profile's own, or clears it if `value` is empty or null.
int profile_set_value(const char* profile, const char* key, const char* value);

/// The same as a decimal number; one that is missing or is none reads as 0.
int profile_get_value_as_int(const char* profile, const char* key);
int profile_set_value_as_int(const char* profile, const char* key, int value);

/// The same as "On" or "Off"; read as profile_parse_bool() does.
int profile_get_value_as_bool(const char* profile, const char* key);
int profile_set_value_as_bool(const char* profile, const char* key, int value);

/// 1 for "On", "True", "Yes" and "1" in any case, 0 for any other text and for null.
int profile_parse_bool(const char* text);

#ifdef __cplusplus
}
#endif
