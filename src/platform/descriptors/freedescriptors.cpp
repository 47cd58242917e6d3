// SPDX-License-Identifier: BSD-3-Clause
#include "freedescriptors.h"

#include <fcntl.h>
#include <sys/resource.h>

// This looks for unused numbers and does not open files as a trial: meanwhile another thread could
// fail, because the trial would use up the descriptors.
bool areDescriptorsFree(int count)
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return false;
    }
    for (rlim_t descriptor = 0; count > 0 && descriptor < limit.rlim_cur; ++descriptor) {
        const bool isUsed = fcntl(int(descriptor), F_GETFD) != -1;
        count -= isUsed ? 0 : 1;
    }
    return count <= 0;
}
