// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class Library;
class MoodsetService;

/// Waits until the daemon has read the data of the file at the absolute path as it is now, and
/// returns why it has not, in one line. An empty text says nothing about what the data are like.
/// The daemon must know the file already, and it must be of a type that the daemon reads.
QString waitForFile(const MoodsetService& service, const Library& library, const QString& path);
