// SPDX-License-Identifier: BSD-3-Clause
#include "themelog.h"

Q_LOGGING_CATEGORY(themeLog, "moodsetd.theme")
