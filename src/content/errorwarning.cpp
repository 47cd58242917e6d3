// SPDX-License-Identifier: BSD-3-Clause
#include "errorwarning.h"
#include "contentlog.h"

#include <QSqlError>

void warnOfError(const QSqlError& error, const char* function, const char* message)
{
    qCWarning(contentLog) << function;
    qCWarning(contentLog) << message;
    qCWarning(contentLog) << error;
}
