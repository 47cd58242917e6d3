// SPDX-License-Identifier: BSD-3-Clause
#include "colorstring.h"

QString colorToString(const QColor& color)
{
    return color.name(QColor::HexArgb);
}

QColor colorFromString(const QString& name)
{
    return QColor(name);
}
