// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <functional>

/// The peak memory, in KiB, of a child process that runs a function and ends. Ends this process if
/// the child fails. This process must have one thread only, and hold no database open.
long peakMemoryOf(const std::function<void()>& function);
