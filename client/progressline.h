// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "library.h"

/// Shows how far indexing is, on the standard error: on a terminal in one line that is written over
/// again and again, and removed at the end. Elsewhere nothing is shown.
class ProgressLine
{
public:
    ProgressLine();
    ~ProgressLine();
    Q_DISABLE_COPY_MOVE(ProgressLine)

    void show(const Library::Counts& counts);

private:
    bool m_onTerminal;
};
