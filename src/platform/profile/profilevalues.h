// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// Profile values in the key/value store, read and written as they stand there.
namespace ProfileValues {

/// The directory that holds all of it, with a "/" at its end.
extern const QByteArray directory;

/// The profile whose values stand in for those that others do not have.
extern const QByteArray fallbackProfile;

/// The active profile if none is set.
extern const QByteArray defaultProfile;

/// The key of a value, empty if one of the names is malformed.
QByteArray storeKey(const QByteArray& profile, const QByteArray& key);

/// The value of the profile or else of the fallback profile, empty if there is none.
QByteArray value(const QByteArray& profile, const QByteArray& key);

/// Sets a profile's own value, or clears it if `value` is empty. False if that is not possible.
bool setValue(const QByteArray& profile, const QByteArray& key, const QByteArray& value);

QByteArray activeProfile();

/// False if the name is malformed or cannot be written.
bool setActiveProfile(const QByteArray& profile);

} // namespace ProfileValues
