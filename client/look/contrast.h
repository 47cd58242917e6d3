// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QImage>

/// The mean colour of an image's pixels, dimmed by a layer of black of the given opacity.
QColor meanColor(const QImage& image, qreal dimming = 0);

/// The contrast of a colour on a background, from 1, none, to 21, black on white, as the Web
/// Content Accessibility Guidelines define it. Where the colour is translucent, the background
/// shows through.
qreal contrastOn(const QColor& background, const QColor& color);
