// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Returns `text` with escapes such as "\n" and "\u001b" for all characters that a terminal would
/// execute and not show: control characters, line breaks, and marks that change the direction of
/// writing.
QString printableText(const QString& text);

/// The number of terminal columns that `text` takes. It must be printable, except for colours (see
/// displayColor()) in a text of ASCII characters.
int columnCount(const QString& text);
