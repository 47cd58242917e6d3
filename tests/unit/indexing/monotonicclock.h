// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The monotonic clock of this program, which a test can turn forward. It is that of Qt as well:
/// the program's clock_gettime() stands in for the C library's, everywhere in the process.
namespace MonotonicClock {

/// From now on the clock is ahead by so much more.
void advance(int seconds);

} // namespace MonotonicClock
