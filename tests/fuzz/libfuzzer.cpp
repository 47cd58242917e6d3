// SPDX-License-Identifier: BSD-3-Clause
// The functions that libFuzzer calls.
#include "fuzztarget.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments)
{
    static int argumentCount = *count;
    static const QCoreApplication application(argumentCount, *arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    runTarget(QByteArray(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}
