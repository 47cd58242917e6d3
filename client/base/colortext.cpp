// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"

#include <unistd.h>

namespace {

/// The same text as colorToString() gives, but several times as fast. Tables can have thousands of
/// colours.
QString hexText(const QColor& color)
{
    const char* const digits = "0123456789abcdef";
    constexpr int digitCount = 8;
    constexpr int bitsPerDigit = 4;
    QString text(digitCount + 1, Qt::Uninitialized);
    QChar* place = text.data();
    *place = QLatin1Char('#');
    const QRgb value = color.rgba();
    for (int shift = bitsPerDigit * (digitCount - 1); shift >= 0; shift -= bitsPerDigit) {
        *++place = QLatin1Char(digits[(value >> shift) & 0xf]);
    }
    return text;
}

} // namespace

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
        return hexText(color);
    case ColorStyle::Swatches:
        return colorSwatch(color);
    }
    return {};
}
