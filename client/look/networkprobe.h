// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QUrl>

/// What an address answers, asked as the daemon asks, which follows no redirection: {"fault":
/// what}, "error" with the reason as "detail", "redirected" with the address, or "no-picture" with
/// the type of what is there; an empty text if it sends a picture. Waits until the beginning of the
/// body has come, or for timeoutMs; then "timeout".
QJsonObject probeAddress(const QUrl& url, int timeoutMs);
