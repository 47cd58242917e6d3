// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "appearance.h"

#include <QJsonObject>
#include <QString>

/// The sound theme "moodset" in the user's data directory, whose sounds are links to the tones, and
/// the feedback theme of the same name in the configuration directory, which never changes: the
/// service reads a feedback theme once, but follows a link each time that it plays.
namespace SoundTheme {

/// The links by the names of the sounds: the file of the tone, a silent file for a sound that is
/// switched off, null for one that is left to the theme below.
QJsonObject plan(const Sound& sound);

/// Which tone cannot be played, in one sentence; empty if all can. A sound without a playable tone
/// is that of the theme below.
QString shortfall(const Sound& sound);

/// Writes the themes. Names of a plan that are no sounds are passed over. Returns what went wrong,
/// or an empty text.
QString write(const QJsonObject& plan);

/// Says which link is not as planned; empty if all are.
QString difference(const QJsonObject& plan);

/// Removes both themes.
void remove();

} // namespace SoundTheme
