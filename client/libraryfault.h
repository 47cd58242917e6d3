// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class LibraryReader;

/// Why the last call of a reader of the daemon's database failed, in one line and in the language
/// of the user, except for what SQLite itself says; empty if it did not.
QString libraryFault(const LibraryReader& library);

/// The same; if there is no database, also how to get one.
QString libraryFaultWithAdvice(const LibraryReader& library);
