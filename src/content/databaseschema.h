// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>

/// The content database's tables, indexes and triggers. docs/database.md tells what each column
/// holds.
namespace DatabaseSchema {

/// The version that a file made here carries in `user_version`.
constexpr int Version = 10;

/// The statements that make the schema in an empty file, in the order in which they run.
QStringList statements();

} // namespace DatabaseSchema
