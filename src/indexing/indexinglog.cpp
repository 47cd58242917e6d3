// SPDX-License-Identifier: BSD-3-Clause
#include "indexinglog.h"

Q_LOGGING_CATEGORY(indexingLog, "moodsetd.indexing")
