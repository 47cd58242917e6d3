// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QIODevice;

/// The content of a regular file of at most `largest` bytes; nothing for any other.
std::optional<QByteArray> readWhole(const QString& path, qint64 largest);

/// Tells one state of a file from another; empty if there is no file.
QString fileStamp(const QString& path);

/// The URI of a file as shells take it: always with "file:///", and percent-encoded.
QString fileUri(const QString& path);

/// Writes a file, and the directory that it lies in, so that a reader sees the old content or the
/// new one. A symbolic link stays, and the file that it leads to is written. Returns what went
/// wrong, or an empty text.
QString writeWhole(const QString& path, const QByteArray& content);

/// Writes all of the bytes to an open file without a buffer. Returns what went wrong, or an empty
/// text.
QString writeAll(QIODevice* file, const char* data, qint64 length);

/// The suffix for a picture that every shell can show, "jpg" or "png" by the first bytes of the
/// file; empty for any other file, and for one of more than 64 MiB.
QString pictureSuffix(const QString& path);

/// Whether the first bytes of a file say that it is WAV or Ogg Vorbis.
bool isPlayableTone(const QString& path);
