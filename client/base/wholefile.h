// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file that takes the place of the one of its name as a whole, or not at all, and that
/// only its owner can read. Returns why it cannot, in one line, or an empty text.
QString writeWholeFile(const QString& path, const QByteArray& content);
