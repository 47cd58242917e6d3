// SPDX-License-Identifier: BSD-3-Clause
#include "servicelog.h"

Q_LOGGING_CATEGORY(serviceLog, "moodsetd.service")
