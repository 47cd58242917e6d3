// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The content of a regular file of at most `largest` bytes; nothing for any other.
std::optional<QByteArray> readWhole(const QString& path, qint64 largest);

/// The URI of a file in the form that shells need: it begins with "file:///" and is
/// percent-encoded.
QString fileUri(const QString& path);

/// Does what replaceFile() does, and first makes the directory of the file. Returns what went
/// wrong, in words that name the path, or an empty text.
QString writeWhole(const QString& path, const QByteArray& content);

/// If every shell can show the picture, the suffix for it: "jpg" or "png", by the first bytes of
/// the file. Empty for any other file.
QString pictureSuffix(const QString& path);

/// Whether a file is WAV or Ogg Vorbis, by its first bytes.
bool isPlayableTone(const QString& path);
