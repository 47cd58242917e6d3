// SPDX-License-Identifier: BSD-3-Clause
#include "unitaddressspace.h"

#include <QByteArray>
#include <QFile>

qint64 unitAddressSpace()
{
    QFile unit(QStringLiteral(DAEMON_UNIT));
    const QByteArray setting = "LimitAS=";
    if (unit.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = unit.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith(setting)) {
                return line.mid(setting.size()).toLongLong();
            }
        }
    }
    return 0;
}
