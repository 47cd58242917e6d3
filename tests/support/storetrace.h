// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// What this process asks of the key/value store: the calls to the store's client library pass
/// through here. For programs that link
/// moodsetd-store-trace-test-support only.
namespace StoreTrace {

/// The calls since the last time, in order: "/key='text'" for a write, "sync" for a sync.
QStringList take();

} // namespace StoreTrace
