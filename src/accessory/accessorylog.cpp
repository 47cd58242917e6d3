// SPDX-License-Identifier: BSD-3-Clause
#include "accessorylog.h"

Q_LOGGING_CATEGORY(accessoryLog, "moodsetd.accessory")
