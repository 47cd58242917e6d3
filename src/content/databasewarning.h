// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QSqlDatabase;

/// Reports a failed operation on a connection in three warnings: the signature of the function that
/// wanted it, the message, and the connection's last error.
void warnOfDatabase(const QSqlDatabase& database, const char* function, const char* message);
