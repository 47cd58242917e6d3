// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

/// How colours are shown.
enum class ColorStyle {
    Text, ///< as "#aarrggbb"
    Swatches ///< as fields of a terminal's lines, without their transparency
};

/// How colours are to be shown on the standard output: as fields if it is a terminal, unless the
/// environment's NO_COLOR, which other programs heed as well, asks for none.
ColorStyle standardOutputColorStyle();

/// A field of four columns in the colour, for a terminal of 24-bit colours; color must be valid.
QString colorSwatch(const QColor& color);

/// The colour in one of the styles; a minus sign for an invalid one.
QString displayColor(const QColor& color, ColorStyle style);
