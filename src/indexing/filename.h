// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

class QByteArray;

/// Decodes a file name from its bytes on the disk. Nothing if they are not text, so that no path
/// can name the file. Names are UTF-8 in all usual locales.
std::optional<QString> decodeFileName(const QByteArray& bytes);

/// Reports a file or directory that gets no row, because isStorableName() returns false for its
/// name. As in all reports, `function` is the signature of the function that has found it.
void warnOfUnstorableName(const char* function, const QString& path);
/// Reports a file or directory that gets no row, because decodeFileName() fails for its name.
void warnOfUndecodableName(const char* function, const QByteArray& path);
