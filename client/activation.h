// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QUrl>

class MoodsetService;

/// Whether and how long to wait for a picture on the network.
struct NetworkWait
{
    bool isWanted = true;
    int timeoutMs = 60000;
};

/// Applies the moodset or picture of a URL, or only makes its moodset, and checks that this has
/// happened. The result describes the moodset. `subject` is the name that the user gave it.
/// @{
Outcome activate(
    const MoodsetService& service, const QUrl& url, const QString& subject,
    const NetworkWait& wait);
Outcome createMoodset(
    const MoodsetService& service, const QUrl& url, const QString& subject,
    const NetworkWait& wait);
/// @}
