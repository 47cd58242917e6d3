// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"

#include <colorstring.h>
#include <unistd.h>

ColorStyle standardOutputColorStyle()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR")
        ? ColorStyle::Swatches
        : ColorStyle::Text;
}

QString colorSwatch(const QColor& color)
{
    return QStringLiteral("\033[48;2;%1;%2;%3m    \033[0m")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue());
}

QString displayColor(const QColor& color, ColorStyle style)
{
    if (!color.isValid()) {
        return QStringLiteral("-");
    }
    switch (style) {
    case ColorStyle::Text:
        return colorToString(color);
    case ColorStyle::Swatches:
        return colorSwatch(color);
    }
    return {};
}
