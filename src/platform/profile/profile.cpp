// SPDX-License-Identifier: BSD-3-Clause
#include "profile.h"

#include "profiletracker.h"
#include "profilevalues.h"

#include <cstring>

namespace {

int statusOf(bool success)
{
    return success ? 0 : -1;
}

} // namespace

int profile_tracker_init()
{
    ProfileTracker::instance().start();
    return 0;
}

void profile_tracker_quit()
{
    ProfileTracker::instance().stop();
}

void profile_connection_enable_autoconnect()
{
}

void profile_track_add_profile_cb(
    profile_track_profile_fn callback, void* user_data, profile_user_data_free_fn free_data)
{
    ProfileTracker::instance().profileCallbacks.add(callback, user_data, free_data);
}

void profile_track_add_active_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data)
{
    ProfileTracker::instance().activeCallbacks.add(callback, user_data, free_data);
}

void profile_track_add_change_cb(
    profile_track_value_fn callback, void* user_data, profile_user_data_free_fn free_data)
{
    ProfileTracker::instance().changeCallbacks.add(callback, user_data, free_data);
}

int profile_track_remove_profile_cb(profile_track_profile_fn callback, void* user_data)
{
    return statusOf(ProfileTracker::instance().profileCallbacks.remove(callback, user_data));
}

int profile_track_remove_active_cb(profile_track_value_fn callback, void* user_data)
{
    return statusOf(ProfileTracker::instance().activeCallbacks.remove(callback, user_data));
}

int profile_track_remove_change_cb(profile_track_value_fn callback, void* user_data)
{
    return statusOf(ProfileTracker::instance().changeCallbacks.remove(callback, user_data));
}

char* profile_get_profile()
{
    return strdup(ProfileValues::activeProfile().constData());
}

int profile_set_profile(const char* profile)
{
    return statusOf(ProfileValues::setActiveProfile(profile));
}

char* profile_get_value(const char* profile, const char* key)
{
    const QByteArray value = ProfileValues::value(profile, key);
    return value.isEmpty() ? nullptr : strdup(value.constData());
}

int profile_set_value(const char* profile, const char* key, const char* value)
{
    return statusOf(ProfileValues::setValue(profile, key, value));
}

int profile_get_value_as_int(const char* profile, const char* key)
{
    return ProfileValues::value(profile, key).toInt();
}

int profile_set_value_as_int(const char* profile, const char* key, int value)
{
    return statusOf(ProfileValues::setValue(profile, key, QByteArray::number(value)));
}

int profile_get_value_as_bool(const char* profile, const char* key)
{
    return profile_parse_bool(ProfileValues::value(profile, key).constData());
}

int profile_set_value_as_bool(const char* profile, const char* key, int value)
{
    return statusOf(ProfileValues::setValue(profile, key, value != 0 ? "On" : "Off"));
}

int profile_parse_bool(const char* text)
{
    const QByteArray lower = QByteArray(text).toLower();
    return lower == "on" || lower == "true" || lower == "yes" || lower == "1" ? 1 : 0;
}
