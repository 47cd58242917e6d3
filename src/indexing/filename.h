// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QByteArray;
class QString;

/// Decodes a file name from its bytes on the disk. False if they are not text, so that no path can
/// name the file. Names are UTF-8 in all usual locales.
bool decodeFileName(const QByteArray& bytes, QString* name);

/// Reports a file or directory that gets no row, because isStorableName() returns false for its
/// name. As in all reports, `function` is the signature of the function that has found it.
void warnOfUnstorableName(const char* function, const QString& path);
/// Reports a file or directory that gets no row, because decodeFileName() fails for its name.
void warnOfUndecodableName(const char* function, const QByteArray& path);
