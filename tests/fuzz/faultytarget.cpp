// SPDX-License-Identifier: BSD-3-Clause
// A target with every kind of fault, which tests the replay. The input selects the fault.
#include "fuzztarget.h"

#include <QDebug>

#include <cstdlib>
#include <stdexcept>

void runTarget(const QByteArray& input)
{
    allowNoWarningsBut({"expected"});
    const QByteArray fault = input.trimmed();
    if (fault == "exception") {
        throw std::runtime_error("thrown");
    }
    if (fault == "crash") {
        abort();
    }
    if (fault == "stray") {
        qWarning("unexpected");
    }
    require(fault != "broken", "promise");
    qWarning("expected warning");
}
