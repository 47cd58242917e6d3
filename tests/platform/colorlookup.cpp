// SPDX-License-Identifier: BSD-3-Clause
#include "colorlookup.h"

ColorLookup::ColorLookup(const QVector<QColor>& palette){Q_UNUSED(palette)}

QColor ColorLookup::remap(const QColor& color) const
{
    return color;
}
