// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

/// Drops the pages of all files below a folder from memory, so that they are read from the disk
/// again. Files that a process has changed are written first. Ends this process if that fails.
void dropPages(const QString& folder);

/// How many bytes have been read so far from the disk that a folder is on, by whatever process;
/// nothing if the system does not count them.
std::optional<double> bytesRead(const QString& folder);
