// SPDX-License-Identifier: BSD-3-Clause
#include "printabletext.h"

#include <QVector>

#include <algorithm>
#include <cwchar>

namespace {

int wideColumnCount(const QString& text)
{
    int columns = 0;
    for (const uint character : text.toUcs4()) {
        const int width = wcwidth(static_cast<wchar_t>(character));
        // A character that the locale does not know is shown as one question mark.
        columns += width < 0 ? 1 : width;
    }
    return columns;
}

} // namespace

QString printableText(const QString& text)
{
    const auto isPlain = [](QChar unit) {
        return unit >= QLatin1Char(' ') && unit <= QLatin1Char('~');
    };
    if (std::all_of(text.cbegin(), text.cend(), isPlain)) {
        return text;
    }
    QString result;
    for (const uint character : text.toUcs4()) {
        if (character == '\n') {
            result += QLatin1String("\\n");
        } else if (character == '\t') {
            result += QLatin1String("\\t");
        } else if (QChar::isPrint(character)) {
            result += QString::fromUcs4(&character, 1);
        } else {
            result += QStringLiteral("\\u%1").arg(character, 4, 16, QLatin1Char('0'));
        }
    }
    return result;
}

int columnCount(const QString& text)
{
    int columns = 0;
    bool isColor = false;
    for (const QChar unit : text) {
        if (unit.unicode() > '~') {
            return wideColumnCount(text);
        }
        // A sequence that sets a colour takes no columns.
        isColor = isColor || unit == QLatin1Char('\033');
        columns += isColor ? 0 : 1;
        isColor = isColor && unit != QLatin1Char('m');
    }
    return columns;
}
