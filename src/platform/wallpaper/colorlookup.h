// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QVector>

/// Gives colours that are readable on a black background, from a palette of such colours.
class ColorLookup
{
public:
    explicit ColorLookup(const QVector<QColor>& palette);

    /// The colour to use for `color`. If the hue of `color` is between the lowest and the highest
    /// hue of the palette, this is the palette's colour with the nearest hue, or the first of two
    /// that are equally near. Otherwise, and for a grey, it is `color` itself.
    ///
    /// The palette covers the hues that are too dark to be readable. The eye sees blue and violet
    /// light as the darkest: a blue with the saturation 128 and the value 255 has a contrast to
    /// black of only 6.4:1, while all hues outside of 210 to 270 degrees have at least 7:1. The
    /// palette has paler colours for these hues, which have 7.7:1.
    QColor remap(const QColor& color) const;

private:
    QVector<QColor> m_palette;
};
