// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "command.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// A command with the arguments and options that the user gave, which have been checked.
class Invocation
{
public:
    const Command* command = nullptr;
    QStringList arguments;
    QHash<QString, QString> options;
    /// Whether to print JSON.
    bool json = false;
    /// Whether to print nothing but errors.
    bool quiet = false;

    QString argument(int index = 0) const { return arguments.value(index); }
    bool has(const char* option) const { return options.contains(QLatin1String(option)); }
    QString value(const char* option) const { return options.value(QLatin1String(option)); }

    /// The value of the option --timeout in ms, or `standardMs` if it was not given.
    int timeoutMs(int standardMs) const
    {
        constexpr double msPerSecond = 1000;
        return has("timeout") ? int(value("timeout").toDouble() * msPerSecond) : standardMs;
    }
};
