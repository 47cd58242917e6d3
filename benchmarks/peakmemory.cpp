// SPDX-License-Identifier: BSD-3-Clause
#include "peakmemory.h"

#include "measuredprocess.h"

#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

long peakMemoryOf(const std::function<void()>& function)
{
    const pid_t child = fork();
    if (child == 0) {
        function();
        _exit(EXIT_SUCCESS);
    }
    int status = 0;
    rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        giveUp("a child that lists has failed");
    }
    return usage.ru_maxrss;
}
