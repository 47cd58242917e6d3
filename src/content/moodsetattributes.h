// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"
#include "moodsetdata.h"

#include <QStringList>
#include <QVariantMap>

/// The attributes of a moodset as `saveAttributes` takes them. The daemon answers every call in the
/// same way, so a client that is to know what came of one compares them.
namespace MoodsetAttributes {

/// All that a user can edit, as a moodset has it.
MOODSET_CONTENT_EXPORT QVariantMap whole(const MoodsetData& moodset);

/// The values that a moodset has for the same attributes; an empty text for a colour that it does
/// not have.
MOODSET_CONTENT_EXPORT QVariantMap
current(const MoodsetData& moodset, const QVariantMap& attributes);

/// The names of the attributes that a moodset has with other values. Tones are compared by their
/// local files.
MOODSET_CONTENT_EXPORT QStringList
differing(const MoodsetData& moodset, const QVariantMap& attributes);

} // namespace MoodsetAttributes
