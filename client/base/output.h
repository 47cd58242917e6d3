// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The standard output.
namespace Output {

/// Makes sure that no file which is opened later takes the place of the standard output or the
/// standard error where one of these is closed. Call before any file is opened.
void keepPlaces();

/// Writes a text for people, in the encoding of the locale. Returns the reason of a failure, in one
/// line, or an empty text.
QString writeText(const QString& text);

/// Writes JSON, which is UTF-8 in every locale. Returns the reason of a failure, in one line, or an
/// empty text.
QString writeJson(const QString& json);

/// Writes an error message, in one line, to the standard error; nothing if it is empty.
void writeError(const QString& error);

} // namespace Output
