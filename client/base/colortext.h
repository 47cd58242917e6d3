// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

/// How colours are shown.
enum class ColorStyle {
    Text, ///< as "#aarrggbb"
    Swatches ///< as fields of a terminal's lines, without their transparency
};

/// The style for the standard output: fields if it is a terminal, unless the environment variable
/// NO_COLOR is set.
ColorStyle standardOutputColorStyle();

/// A field of four columns in this colour, for a terminal with 24-bit colours. The colour must be
/// valid.
QString colorSwatch(const QColor& color);

/// The colour in one of the styles. A minus sign for an invalid colour.
QString displayColor(const QColor& color, ColorStyle style);
