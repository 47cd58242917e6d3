// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QVector>

/// Gives colours that can be read on a black background, with the help of a palette of such
/// colours.
class ColorLookup
{
public:
    explicit ColorLookup(const QVector<QColor>& palette);

    /// The colour to use for `color`: the palette's nearest in hue, if the hue of `color` lies
    /// within the palette's span, from its lowest hue to its highest; of two equally near the
    /// first. Else, and for a grey, `color` itself.
    ///
    /// The palette covers the hues that are too dark to be read: blues and violets give least of
    /// their light to the eye, so that a blue of saturation 128 and value 255 has a contrast
    /// to black of 6.4:1 only, where all hues outside 210 to 270 degrees have 7:1 and more. The
    /// palette's colours for these are paler, and lift them to 7.7:1.
    [[nodiscard]] QColor remap(const QColor& color) const;

private:
    QVector<QColor> m_palette;
};
