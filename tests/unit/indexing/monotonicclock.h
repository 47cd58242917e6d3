// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The monotonic clock of this program, which a test can advance. Qt uses it, too, because the
/// program's clock_gettime() replaces the function of the C library.
namespace MonotonicClock {

/// Advances the clock by this much.
void advance(int seconds);

} // namespace MonotonicClock
