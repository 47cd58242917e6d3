/* SPDX-License-Identifier: BSD-3-Clause */
#pragma once

/* A service of one profile, whose values are all empty. */

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-use-using) */
typedef void (*profile_track_profile_fn)(const char* profile, void* user_data);
typedef void (*profile_track_value_fn)(
    const char* profile, const char* key, const char* value, const char* type, void* user_data);
typedef void (*profile_user_data_free_fn)(void* user_data);
/* NOLINTEND(modernize-use-using) */

int profile_tracker_init(void);
void profile_tracker_quit(void);
void profile_connection_enable_autoconnect(void);
void profile_track_add_profile_cb(
    profile_track_profile_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_active_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);
void profile_track_add_change_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data);
int profile_track_remove_profile_cb(profile_track_profile_fn callback, void* user_data);
int profile_track_remove_active_cb(profile_track_value_fn callback, void* user_data);
int profile_track_remove_change_cb(profile_track_value_fn callback, void* user_data);
char* profile_get_profile(void);
int profile_set_profile(const char* profile);
char* profile_get_value(const char* profile, const char* key);
int profile_set_value(const char* profile, const char* key, const char* value);
int profile_get_value_as_int(const char* profile, const char* key);
int profile_set_value_as_int(const char* profile, const char* key, int value);
int profile_get_value_as_bool(const char* profile, const char* key);
int profile_set_value_as_bool(const char* profile, const char* key, int value);
int profile_parse_bool(const char* text);

#ifdef __cplusplus
}
#endif
