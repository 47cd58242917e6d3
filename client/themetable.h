// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colortext.h"
#include "theme.h"

#include <QString>

/// A table of the theme's keys and their values, one to a line, below a line of titles. Colours are
/// texts, in the style Swatches after a field of the colour. A minus sign stands for what is not
/// set.
/// terminalColumns is as for textTable().
QString themeTable(const Theme& theme, ColorStyle style, int terminalColumns = 0);
