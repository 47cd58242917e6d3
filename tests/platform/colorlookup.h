// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QVector>

/// A palette that leaves colors as they are.
class ColorLookup
{
public:
    explicit ColorLookup(const QVector<QColor>& palette);
    QColor remap(const QColor& color) const;
};
