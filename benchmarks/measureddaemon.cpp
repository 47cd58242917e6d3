// SPDX-License-Identifier: BSD-3-Clause
#include "measureddaemon.h"

#include "content/queryagentdatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <thread>
#include <utility>

const QByteArray FileIdleLine("FileManager idle in ");
const QByteArray InstallIdleLine("InstallManager idle in ");
const QByteArray DoneLine("done in ");

QByteArray program(const char* name)
{
    return QFile::encodeName(
        QDir(QCoreApplication::applicationDirPath()).filePath(QLatin1String(name)));
}

QString daemonDatabase()
{
    return QueryAgentDatabase::filePath();
}

void removeDatabase(const QString& path)
{
    for (const char* suffix : {"", "-wal", "-shm"}) {
        QFile::remove(path + QLatin1String(suffix)); // It need not be there.
    }
}

void setPicturesFolder(const QString& folder)
{
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    QFile file(config.filePath(QStringLiteral("user-dirs.dirs")));
    if (!config.mkpath(QStringLiteral(".")) || !file.open(QIODevice::WriteOnly)
        || file.write("XDG_PICTURES_DIR=\"" + QFile::encodeName(folder) + "\"\n") < 0) {
        giveUp("cannot write " + QFile::encodeName(file.fileName()));
    }
}

MeasuredProcess startDaemon(const QByteArray& line, const QByteArray& daemon)
{
    MeasuredProcess process({daemon});
    process.waitForLine(line);
    return process;
}

Milliseconds timeSinceStart(const MeasuredProcess& process)
{
    return std::chrono::steady_clock::now() - process.startTime();
}

Milliseconds settledProcessorTime(const MeasuredProcess& process)
{
    // This is far longer than the daemon waits before an announcement.
    constexpr std::chrono::milliseconds pause(200);
    Milliseconds before(-1);
    Milliseconds now = process.processorTime();
    while (now != before) {
        std::this_thread::sleep_for(pause);
        before = std::exchange(now, process.processorTime());
    }
    return now;
}
