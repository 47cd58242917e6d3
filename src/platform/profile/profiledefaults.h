// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// The installed defaults of the profile "fallback", from the file "moodsetd/profile-defaults" in a
/// data directory. They are used if the key/value store has no value.
namespace ProfileDefaults {

/// The text of a key, or an empty text if the file has none. The file is read at the first call. If
/// it cannot be read, there is one warning, and no values.
QByteArray value(const QByteArray& key);

} // namespace ProfileDefaults
