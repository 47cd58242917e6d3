// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QString>

class LibraryReader;
class MoodsetService;

/// Waits until the daemon has read the present version of the file at the absolute path. Success
/// does not mean that the data are good. The daemon must know the file already, and must be able to
/// read its type.
Outcome waitForFile(
    const MoodsetService& service, const LibraryReader& library, const QString& path,
    int timeoutMs);
