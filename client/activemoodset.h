// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The path of the active moodset's file or picture, from the key/value store; empty if there is
/// none. Needs an application object; main thread only.
QString readActiveMoodset();
