// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// Runs a program to its end, with its output among the test's. Returns whether it succeeded within
/// 30 seconds. The event loop does not turn meanwhile.
Q_REQUIRED_RESULT bool runCommand(const QString& program, const QStringList& arguments);
