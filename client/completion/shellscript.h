// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The script that makes a shell, "bash", "zsh" or "fish", complete command lines of moodsetctl.
/// Empty for any other shell.
QString completionScript(const QString& shell);
