// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The content of a regular file of at most `largest` bytes; nothing for any other.
std::optional<QByteArray> readWhole(const QString& path, qint64 largest);

/// Tells one state of a file from another; empty if there is no file.
QString fileStamp(const QString& path);

/// The URI of a file as shells take it: always with "file:///", and percent-encoded.
QString fileUri(const QString& path);

/// Does what replaceFile() does, and first makes the directory of the file. Returns what went
/// wrong, in words that name the path, or an empty text.
QString writeWhole(const QString& path, const QByteArray& content);

/// The suffix for a picture that every shell can show, "jpg" or "png" by the first bytes of the
/// file; empty for any other file, and for one of more than 64 MiB.
QString pictureSuffix(const QString& path);

/// Whether a file is WAV or Ogg Vorbis, by its first bytes.
bool isPlayableTone(const QString& path);
