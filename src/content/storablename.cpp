// SPDX-License-Identifier: BSD-3-Clause
#include "storablename.h"

#include <QString>

bool isStorableName(const QString& name)
{
    if (name.startsWith(QChar::ByteOrderMark)) {
        return false;
    }
    for (int i = 0; i < name.size(); ++i) {
        const QChar unit = name.at(i);
        if (unit == QChar::ByteOrderSwapped || unit == QChar(0xffff)) {
            return false;
        }
        if (unit.isSurrogate()) {
            const bool isPair =
                unit.isHighSurrogate() && i + 1 < name.size() && name.at(i + 1).isLowSurrogate();
            if (!isPair) {
                return false;
            }
            ++i;
        }
    }
    return true;
}
