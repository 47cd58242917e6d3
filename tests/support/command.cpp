// SPDX-License-Identifier: BSD-3-Clause
#include "command.h"

#include <QProcess>

bool runCommand(const QString& program, const QStringList& arguments)
{
    constexpr int deadlineMs = 30000;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished(deadlineMs) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}
