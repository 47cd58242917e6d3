// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// While the object lives, this process can have only `headroom` bytes of address space more than
/// it has now. Larger allocations fail. Fails the current test if the limit cannot be set.
///
/// Does not work under the address sanitizer, which reserves terabytes of addresses.
class AddressLimit
{
public:
    explicit AddressLimit(qint64 headroom);
    ~AddressLimit();
    Q_DISABLE_COPY_MOVE(AddressLimit)

private:
    quint64 m_previousLimit = 0;
};
