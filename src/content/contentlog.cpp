// SPDX-License-Identifier: BSD-3-Clause
#include "contentlog.h"

Q_LOGGING_CATEGORY(contentLog, "moodsetd.content")
