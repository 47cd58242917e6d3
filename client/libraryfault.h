// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class LibraryReader;

/// The reason why the last call of `library` failed, in one line. It is in the user's language,
/// except for texts of SQLite. Empty if the call succeeded.
QString libraryFault(const LibraryReader& library);
