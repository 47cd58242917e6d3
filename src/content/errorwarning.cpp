// SPDX-License-Identifier: BSD-3-Clause
#include "errorwarning.h"

#include <QDebug>
#include <QSqlError>

void warnOfError(const QSqlError& error, const char* function, const char* message)
{
    qWarning() << function;
    qWarning() << message;
    qWarning() << error;
}
