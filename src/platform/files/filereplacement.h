// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <optional>

/// Writes all of the bytes to an open file without a buffer. Returns what went wrong, or an empty
/// text.
QString writeAll(QIODevice* file, const char* data, qint64 length);

/// Gives the file at `path` this content: a reader sees the whole old content or the whole new one.
/// A symbolic link stays, and the file that it leads to is replaced. Without `permissions`, the
/// file keeps those that it has. Returns what went wrong, or an empty text.
QString replaceFile(
    const QString& path, const QByteArray& content,
    const std::optional<QFileDevice::Permissions>& permissions = std::nullopt);
