// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Makes the monitor of the back cover, which the first service object of a process would make: it
/// finds no back-cover daemon, and says so. Call it before the test's own log is there.
void makeCoverMonitor();
