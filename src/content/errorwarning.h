// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QSqlError;

/// Reports a database error in three warnings: the signature of the function, the message, and the
/// error. QueryAgent::warn() also logs the statement's text.
void warnOfError(const QSqlError& error, const char* function, const char* message);
