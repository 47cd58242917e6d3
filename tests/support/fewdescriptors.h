// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <sys/resource.h>

/// While the object lives, this process can open only this many files more than it has open now.
/// Fails the current test if the limit cannot be set.
class FewDescriptors
{
public:
    explicit FewDescriptors(int count);
    ~FewDescriptors();
    Q_DISABLE_COPY_MOVE(FewDescriptors)

private:
    rlimit m_before{};
};
