// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

/// A colour of the theme. The bridge does not use QColor, because Qt Gui would take memory and the
/// bridge needs nothing else from it.
struct Argb
{
    int alpha = 255;
    int red = 0;
    int green = 0;
    int blue = 0;

    /// Reads "#aarrggbb" or "#rrggbb", the two forms in the store. Nothing for any other text.
    static std::optional<Argb> fromText(const QString& text);

    /// "#rrggbb", without the alpha value.
    QString hex() const;
    /// "r, g, b" in decimal numbers, as in CSS.
    QString rgb() const;
    /// "#aarrggbb".
    QString argb() const;
};
