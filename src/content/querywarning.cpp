// SPDX-License-Identifier: BSD-3-Clause
#include "querywarning.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

void warnOfQuery(const QSqlQuery& query, const char* function, const char* message)
{
    qWarning() << function;
    qWarning() << message;
    qWarning() << query.lastError();
    qWarning() << query.lastQuery();
}

void warnOfDatabase(const QSqlDatabase& database, const char* function, const char* message)
{
    qWarning() << function;
    qWarning() << message;
    qWarning() << database.lastError();
}
