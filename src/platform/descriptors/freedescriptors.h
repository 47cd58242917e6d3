// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Whether this process may open `count` more files, sockets and the like now, within its limit
/// (RLIMIT_NOFILE). This opens nothing. Any thread.
///
/// When GLib or Qt start a thread with an event loop and there is no descriptor for it, they end
/// the process. So call this before anything that starts such a thread.
bool areDescriptorsFree(int count);
