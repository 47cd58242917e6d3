// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QSqlDatabase;
class QSqlQuery;

/// Reports a failed statement in four warnings: the signature of the function that ran it, the
/// message, the query's last error, and its text in double quotes.
void warnOfQuery(const QSqlQuery& query, const char* function, const char* message);

/// Reports a failed operation on a connection in three warnings: the signature, the message, and
/// the connection's last error.
void warnOfDatabase(const QSqlDatabase& database, const char* function, const char* message);
