// SPDX-License-Identifier: BSD-3-Clause
#include "oneline.h"

QString oneLine(QString text)
{
    for (QChar& character : text) {
        if (!character.isPrint() && !character.isSurrogate()) {
            character = QLatin1Char('?');
        }
    }
    return text;
}
