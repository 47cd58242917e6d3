// SPDX-License-Identifier: BSD-3-Clause
#include "printabletext.h"

#include <QVector>

#include <cwchar>

QString printableText(const QString& text)
{
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
    for (const uint character : text.toUcs4()) {
        const int width = wcwidth(static_cast<wchar_t>(character));
        // A character that the locale does not know is shown as one question mark.
        columns += width < 0 ? 1 : width;
    }
    return columns;
}
