// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QSqlError;

/// Reports a database error in three warnings: the signature of the function that met it, the
/// message, and the error. Where the statement's text is to follow, QueryAgent::warn() does it.
void warnOfError(const QSqlError& error, const char* function, const char* message);
