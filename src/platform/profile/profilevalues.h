// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// Reads and writes the values of profiles in the key/value store without changing them.
namespace ProfileValues {

/// The directory of all profiles, with a "/" at its end.
extern const QByteArray Directory;

/// The profile whose values are used if another profile lacks them.
extern const QByteArray FallbackProfile;

/// The active profile if none is set.
extern const QByteArray DefaultProfile;

/// The key of a value, empty if one of the names is malformed.
QByteArray storeKey(const QByteArray& profile, const QByteArray& key);

/// The value of the profile, or else of the fallback profile, or else of the installed defaults.
/// Empty if there is none.
QByteArray value(const QByteArray& profile, const QByteArray& key);

/// Sets the profile's own value, or clears it if `value` is empty. False if this is not possible.
bool setValue(const QByteArray& profile, const QByteArray& key, const QByteArray& value);

QByteArray activeProfile();

/// False if the name is malformed or cannot be written.
bool setActiveProfile(const QByteArray& profile);

} // namespace ProfileValues
