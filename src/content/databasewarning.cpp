// SPDX-License-Identifier: BSD-3-Clause
#include "databasewarning.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>

void warnOfDatabase(const QSqlDatabase& database, const char* function, const char* message)
{
    qWarning() << function;
    qWarning() << message;
    qWarning() << database.lastError();
}
