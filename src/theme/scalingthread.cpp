// SPDX-License-Identifier: BSD-3-Clause
#include "scalingthread.h"

#include <QThreadPool>

void keepScalingThread()
{
    constexpr int never = -1;
    QThreadPool* const pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(1);
    pool->setExpiryTimeout(never);
    // The first task starts the thread.
    pool->start([] {});
}
