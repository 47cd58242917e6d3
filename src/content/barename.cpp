// SPDX-License-Identifier: BSD-3-Clause
#include "barename.h"

bool isBareName(const QString& name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null)
        && name.isValidUtf16();
}
