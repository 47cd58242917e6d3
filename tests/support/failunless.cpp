// SPDX-License-Identifier: BSD-3-Clause
#include "failunless.h"

#include <QtTest>

void failUnless(bool isSo, const char* text)
{
    if (!isSo) {
        QTest::qFail(text, __FILE__, __LINE__);
    }
}
