// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <QVariantMap>

#include <moodsetdata.h>

class MoodsetService;

// Commands about moodsets and the theme.
Command moodsetsCommand();
Command showCommand();
Command themeCommand();
Command previewCommand();
Command colorsCommand();
Command setCommand();
Command createCommand();
Command editCommand();
Command favoriteCommand();
Command undoCommand();
Command removeCommand();

/// Changes a moodset, keeps the replaced values for `undo`, and reports the outcome.
Outcome editMoodset(
    const MoodsetService& service, const Moodset& moodset, const QVariantMap& attributes);
