// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QUrl>

/// Requests an address in the same way as the daemon, which follows no redirection. The reply has a
/// "fault" and a "detail": "error" with the reason, "redirected" with the new address, or
/// "no-picture" with the type of the content. The fault is empty if the address sends a picture.
/// Waits until the beginning of the body has arrived, for at most `timeoutMs`; after that, the
/// fault is "timeout".
QJsonObject probeAddress(const QUrl& url, int timeoutMs);
