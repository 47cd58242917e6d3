// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>

/// The content database's tables, indexes and triggers. docs/database.md explains each column.
namespace DatabaseSchema {

/// The value of `user_version` in a file with this schema.
constexpr int Version = 10;

/// The statements that make the schema in an empty file, in the order of execution.
QStringList statements();

/// The statements, in the same order, that make what a file of the current version lacks. `names`
/// are the names of its tables, indexes and triggers. Rows that a missing unique index would refuse
/// are removed first. Empty if nothing is missing.
QStringList completion(const QStringList& names);

} // namespace DatabaseSchema
