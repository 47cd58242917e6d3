// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QLoggingCategory>

/// What src/service logs, so that it can be switched by itself:
/// QT_LOGGING_RULES=moodsetd.service.debug=true.
Q_DECLARE_LOGGING_CATEGORY(serviceLog)
