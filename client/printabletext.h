// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Returns text with everything that a terminal would obey instead of show (control characters,
/// line breaks, marks that turn the direction of writing) as escapes such as "\n" and "\u001b".
QString printableText(const QString& text);

/// How many columns of a terminal text takes; the text must be printable.
int columnCount(const QString& text);
