// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QStringList>

/// Reads and changes the key/value store as another process, with the command "dconf": for instance
/// runDconf({"write", "/key", "'text'"}). Returns its output without the last line break; a command
/// that fails, or takes longer than 20 seconds, fails the current test. The event loop does not
/// turn meanwhile.
QByteArray runDconf(const QStringList& arguments);

/// Lets this process, and those that it starts, have system defaults below the user's values: those
/// of a dconf key file, and a list of keys, one a line, that the user cannot set. Must come before
/// the first use of the store. Returns false if the files cannot be made.
Q_REQUIRED_RESULT bool useSystemDefaults(const QByteArray& keyFile, const QByteArray& locks = {});

/// The id of the store's service process, which is started if need be.
qint64 dconfServicePid();

/// Kills the store's service, and returns when the bus knows it; false if it does not within 5
/// seconds. The next write starts a new one.
Q_REQUIRED_RESULT bool killDconfService();
