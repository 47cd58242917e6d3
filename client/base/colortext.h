// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// How colours are shown.
enum class ColorStyle {
    Text, ///< as "#aarrggbb"
    Swatches ///< as fields of a terminal's lines, without their transparency
};

/// The style for the standard output: fields if it is a terminal, unless the environment variable
/// NO_COLOR is set.
ColorStyle standardOutputColorStyle();

/// Whether a text is a colour as the functions below take it: "#aarrggbb" in lower
/// case, or empty for none.
bool isColorText(const QString& text);

/// The colour in one of the styles; a field has four columns. A minus sign for no colour.
QString displayColor(const QString& color, ColorStyle style);

/// The colour as text. In the style Swatches, its field comes before the text.
QString displayColorWithText(const QString& color, ColorStyle style);
