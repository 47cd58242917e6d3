// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QString;

/// Whether the database's driver returns a name or a path exactly as it was bound.
///
/// The driver binds text as UTF-16, and the database file holds UTF-8. In the conversion, SQLite
/// removes a byte order mark at the start, and replaces half of a surrogate pair and the last two
/// code points of the Basic Multilingual Plane. Such a name would become that of another file.
bool isStorableName(const QString& name);
