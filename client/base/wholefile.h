// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces a file as a whole, or not at all. Only its owner can read it. Returns why this failed,
/// in one line, or an empty text.
QString writeWholeFile(const QString& path, const QByteArray& content);
