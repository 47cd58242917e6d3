// SPDX-License-Identifier: BSD-3-Clause
#include "addresslimit.h"

#include <QFile>
#include <QTest>

#include <sys/resource.h>
#include <unistd.h>

namespace {

quint64 addressSpace()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray pages = file.readAll().split(' ').constFirst();
    return pages.toULongLong() * quint64(sysconf(_SC_PAGESIZE));
}

bool setLimit(rlim_t bytes, quint64* previous)
{
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0) {
        return false;
    }
    *previous = limit.rlim_cur;
    limit.rlim_cur = bytes;
    return setrlimit(RLIMIT_AS, &limit) == 0;
}

} // namespace

AddressLimit::AddressLimit(qint64 headroom)
{
    const quint64 used = addressSpace();
    if (used == 0 || !setLimit(used + quint64(headroom), &m_previousLimit)) {
        QTest::qFail("Cannot limit the address space", __FILE__, __LINE__);
    }
}

AddressLimit::~AddressLimit()
{
    quint64 current = 0;
    if (!setLimit(m_previousLimit, &current)) {
        QTest::qFail("Cannot take back the limit of the address space", __FILE__, __LINE__);
    }
}
