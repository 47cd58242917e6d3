// SPDX-License-Identifier: BSD-3-Clause
#include "failunless.h"

#include <QTest>

void failUnless(bool isSo, const char* text)
{
    if (!isSo) {
        QTest::qFail(text, __FILE__, __LINE__);
    }
}
