// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"

#include <algorithm>
#include <unistd.h>

namespace {

bool isHexDigit(QChar unit)
{
    return (unit >= QLatin1Char('0') && unit <= QLatin1Char('9'))
        || (unit >= QLatin1Char('a') && unit <= QLatin1Char('f'));
}

/// A field in this colour, for a terminal with 24-bit colours.
QString swatch(const QString& color)
{
    constexpr int base = 16;
    constexpr int redPlace = 3;
    const auto part = [&color](int index) {
        return color.midRef(redPlace + 2 * index, 2).toInt(nullptr, base);
    };
    return QStringLiteral("\033[48;2;%1;%2;%3m    \033[0m").arg(part(0)).arg(part(1)).arg(part(2));
}

} // namespace

ColorStyle standardOutputColorStyle()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR")
        ? ColorStyle::Swatches
        : ColorStyle::Text;
}

bool isColorText(const QString& text)
{
    constexpr int size = 9;
    return text.isEmpty()
        || (text.size() == size && text.at(0) == QLatin1Char('#')
            && std::all_of(text.cbegin() + 1, text.cend(), isHexDigit));
}

QString displayColor(const QString& color, ColorStyle style)
{
    if (color.isEmpty()) {
        return QStringLiteral("-");
    }
    return style == ColorStyle::Swatches ? swatch(color) : color;
}

QString displayColorWithText(const QString& color, ColorStyle style)
{
    const QString text = displayColor(color, ColorStyle::Text);
    return style == ColorStyle::Swatches && !color.isEmpty()
        ? swatch(color) + QLatin1Char(' ') + text
        : text;
}
