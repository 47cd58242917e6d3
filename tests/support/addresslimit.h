// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// Lets this process have only `headroom` bytes of address space more than it has, as long as the
/// object lives. What is allocated beyond fails. Fails the current test if that cannot be.
///
/// Not under the address sanitizer, which takes terabytes of addresses for itself.
class AddressLimit
{
public:
    explicit AddressLimit(qint64 headroom);
    ~AddressLimit();
    Q_DISABLE_COPY_MOVE(AddressLimit)

private:
    quint64 m_previousLimit = 0;
};
