// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "staterecord.h"

#include <QJsonObject>
#include <QString>

/// What is known of each adapter: whether it is switched on, whether the shell is there, what was
/// set and when, or why not. Presence is known only while the bridge runs.
QJsonObject statusToJson(const StateRecord& state, bool isRunning);

/// The same for people, in lines.
QString statusToText(const StateRecord& state, bool isRunning);
