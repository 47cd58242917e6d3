// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "appearance.h"

#include <QJsonObject>
#include <QString>

/// The sound theme "moodset" in the user's data directory, and the feedback theme of the same name
/// in the configuration directory. The sounds are links to the tones. The feedback theme never
/// changes: the service reads a feedback theme only once, but follows a link each time that it
/// plays a sound.
namespace SoundTheme {

/// The links by the names of the sounds: the file of the tone, or a silent file for a sound that is
/// not enabled. A sound with the value null comes from the theme that ours is based on.
QJsonObject plan(const Sound& sound);

/// Says which tone cannot be played, in one sentence; empty if all can. Its sound then comes from
/// the theme that ours is based on.
QString shortfall(const Sound& sound);

/// Writes the themes. Names of a plan that are not sounds are ignored. Returns what went wrong, or
/// an empty text.
QString write(const QJsonObject& plan);

/// Says which link differs from the plan; empty if none does.
QString difference(const QJsonObject& plan);

/// Removes both themes.
void remove();

} // namespace SoundTheme
