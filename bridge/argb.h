// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

/// A colour of the theme, without Qt's module for graphics, which would take memory for nothing
/// else.
struct Argb
{
    int alpha = 255;
    int red = 0;
    int green = 0;
    int blue = 0;

    /// Reads "#aarrggbb" or "#rrggbb", the forms that the store holds; nothing for any other text.
    static std::optional<Argb> fromText(const QString& text);

    /// "#rrggbb", without the alpha value.
    QString hex() const;
    /// "r, g, b" in decimal numbers, as CSS and its relatives take it.
    QString rgb() const;
    /// "#aarrggbb".
    QString argb() const;
};
