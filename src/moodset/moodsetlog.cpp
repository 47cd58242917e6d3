// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlog.h"

Q_LOGGING_CATEGORY(moodsetLog, "moodsetd.moodset")
