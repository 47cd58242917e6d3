// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <QString>

/// The reason why a text cannot be a value of this kind, in one line. Empty if it can.
QString valueFault(ValueKind kind, const QString& text);
