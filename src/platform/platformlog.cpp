// SPDX-License-Identifier: BSD-3-Clause
#include "platformlog.h"

Q_LOGGING_CATEGORY(platformLog, "moodsetd.platform")
