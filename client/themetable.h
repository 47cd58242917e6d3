// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colortext.h"
#include "theme.h"

#include <QString>

/// A table of the theme's keys and their values, with a line of titles and one line for each key.
/// Colours are texts; in the style Swatches, a field of the colour comes before the text. A minus
/// sign means that a key is not set. `terminalColumns` has the same meaning as for textTable().
QString themeTable(const Theme& theme, ColorStyle style, int terminalColumns = 0);
