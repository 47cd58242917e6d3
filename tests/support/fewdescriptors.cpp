// SPDX-License-Identifier: BSD-3-Clause
#include "fewdescriptors.h"

#include "failunless.h"

#include <fcntl.h>

FewDescriptors::FewDescriptors(int count)
{
    failUnless(getrlimit(RLIMIT_NOFILE, &m_before) == 0, "Cannot read the limit of descriptors");
    rlimit few{0, m_before.rlim_max};
    // The numbers of those that are open count, too, if they are below the limit.
    while (count > 0) {
        count -= fcntl(int(few.rlim_cur), F_GETFD) == -1 ? 1 : 0;
        ++few.rlim_cur;
    }
    failUnless(setrlimit(RLIMIT_NOFILE, &few) == 0, "Cannot limit the descriptors");
}

FewDescriptors::~FewDescriptors()
{
    failUnless(setrlimit(RLIMIT_NOFILE, &m_before) == 0, "Cannot restore the limit");
}
