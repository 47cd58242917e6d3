// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>

/// Those of the programs that are not installed. A program is given by its name or its path.
QStringList missingPrograms(const QStringList& programs);

/// Skips the running test function if a program is not installed, and names those that are missing.
/// Returns whether the test is skipped, and so has to return.
Q_REQUIRED_RESULT bool skipsWithout(const QStringList& programs);
