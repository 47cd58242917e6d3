// SPDX-License-Identifier: BSD-3-Clause
#include "covermonitor.h"

#include "accessory/dorselmonitor.h"
#include "messagelog.h"

#include <QtTest>

void makeCoverMonitor()
{
    MessageLog log;
    DorselMonitor::instance();
    const QString function =
        QStringLiteral("QDBusMessage DorselMonitor::propertyValue(const QString&)");
    const QString failure = QStringLiteral(
        "Failed to read DORSELD property:  \"org.freedesktop.DBus.Error.ServiceUnknown\" :  \"The "
        "name com.zavro.dorseld was not provided by any .service files\"");
    QCOMPARE(log.takeWarnings(), QStringList({function, failure, function, failure}));
}
