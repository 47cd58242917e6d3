// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "staterecord.h"

#include <QJsonObject>
#include <QString>

/// The status of each adapter: whether it is on, whether its shell runs, and what was set and when,
/// or why nothing was set. Whether the shell runs is known only while the bridge runs.
QJsonObject statusToJson(const StateRecord& state, bool isRunning);

/// The same as text for people.
QString statusToText(const StateRecord& state, bool isRunning);
