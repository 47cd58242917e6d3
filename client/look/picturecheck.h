// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>

/// Why the daemon cannot make wallpapers of the picture at a local path: {"fault": what}, one of
/// "empty", "not-regular", "unreadable", "unknown-format", "not-decoded", "damaged" and
/// "too-large", or an empty text if nothing is wrong with it; "format" names its format, and
/// "width" and "height" are what it claims.
QJsonObject checkPicture(const QString& path);
