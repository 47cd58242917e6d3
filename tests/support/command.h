// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// Runs a program to its end; its output appears in the test's output. Returns whether it succeeded
/// within 30 seconds. The event loop does not run during this time.
Q_REQUIRED_RESULT bool runCommand(const QString& program, const QStringList& arguments);
