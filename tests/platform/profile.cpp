// SPDX-License-Identifier: BSD-3-Clause
#include "profile.h"

#include <cstring>

int profile_tracker_init()
{
    return 0;
}

void profile_tracker_quit()
{
}

void profile_connection_enable_autoconnect()
{
}

void profile_track_add_profile_cb(profile_track_profile_fn, void*, profile_user_data_free_fn)
{
}

void profile_track_add_active_cb(profile_track_value_fn, void*, profile_user_data_free_fn)
{
}

void profile_track_add_change_cb(profile_track_value_fn, void*, profile_user_data_free_fn)
{
}

int profile_track_remove_profile_cb(profile_track_profile_fn, void*)
{
    return 0;
}

int profile_track_remove_active_cb(profile_track_value_fn, void*)
{
    return 0;
}

int profile_track_remove_change_cb(profile_track_value_fn, void*)
{
    return 0;
}

char* profile_get_profile()
{
    return strdup("general");
}

int profile_set_profile(const char*)
{
    return 0;
}

char* profile_get_value(const char*, const char*)
{
    return strdup("");
}

int profile_set_value(const char*, const char*, const char*)
{
    return 0;
}

int profile_get_value_as_int(const char*, const char*)
{
    return 0;
}

int profile_set_value_as_int(const char*, const char*, int)
{
    return 0;
}

int profile_get_value_as_bool(const char*, const char*)
{
    return 0;
}

int profile_set_value_as_bool(const char*, const char*, int)
{
    return 0;
}

int profile_parse_bool(const char*)
{
    return 0;
}
