// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The seven tones of a moodset in their fixed order. The index of a tone is also the number of its
/// bit in MoodsetData::enabledSounds.
namespace Tones {

constexpr int Count = 7;

/// The names: "ringerTone" and so on.
const QStringList& names();

/// The key of a tone's file in the resources and in a moodset file: "ringerToneFile".
QString fileKey(const QString& name);

/// The key of a tone's flag in the attributes: "ringerToneEnabled".
QString enabledKey(const QString& name);

/// The keys of the tones in the profile service: "ringing.alert.tone".
const QStringList& profileKeys();

/// `mask` with the bit of a tone set or cleared.
int withTone(int mask, int index, bool isEnabled);

} // namespace Tones
