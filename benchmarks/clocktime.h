// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <ctime>

/// How much time a clock of the system has counted, in ms. CLOCK_PROCESS_CPUTIME_ID counts the
/// processor time of all threads of this process.
inline double timeOn(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    constexpr double perSecond = 1000;
    constexpr double perNanosecond = 1e-6;
    return double(time.tv_sec) * perSecond + double(time.tv_nsec) * perNanosecond;
}

/// The processor time of all threads while a function runs, in ms.
template <typename Function>
double processorTimeOf(Function function)
{
    const double start = timeOn(CLOCK_PROCESS_CPUTIME_ID);
    function();
    return timeOn(CLOCK_PROCESS_CPUTIME_ID) - start;
}
