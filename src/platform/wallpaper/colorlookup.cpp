// SPDX-License-Identifier: BSD-3-Clause
#include "colorlookup.h"

#include <algorithm>

ColorLookup::ColorLookup(const QVector<QColor>& palette)
    : m_palette(palette)
{
}

QColor ColorLookup::remap(const QColor& color) const
{
    const int hue = color.hsvHue();
    const auto byHue = [](const QColor& a, const QColor& b) { return a.hsvHue() < b.hsvHue(); };
    const auto [lowest, highest] = std::minmax_element(m_palette.begin(), m_palette.end(), byHue);
    if (m_palette.isEmpty() || hue < lowest->hsvHue() || hue > highest->hsvHue()) {
        return color;
    }
    const auto byDistance = [hue](const QColor& a, const QColor& b) {
        return qAbs(a.hsvHue() - hue) < qAbs(b.hsvHue() - hue);
    };
    return *std::min_element(m_palette.begin(), m_palette.end(), byDistance);
}
