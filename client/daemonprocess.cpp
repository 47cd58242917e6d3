// SPDX-License-Identifier: BSD-3-Clause
#include "daemonprocess.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

QString readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString captured(const QString& text, const QString& pattern)
{
    return QRegularExpression(pattern, QRegularExpression::MultilineOption).match(text).captured(1);
}

qint64 numberIn(const QString& text, const QString& pattern, qint64 unknown = -1)
{
    const QString number = captured(text, pattern);
    return number.isEmpty() ? unknown : number.toLongLong();
}

int countWatches(const QDir& process)
{
    const QDir descriptors(process.filePath(QStringLiteral("fdinfo")));
    const QStringList names = descriptors.entryList(QDir::Files);
    int watches = names.isEmpty() ? -1 : 0;
    for (const QString& name : names) {
        watches += readAll(descriptors.filePath(name)).count(QStringLiteral("inotify wd:"));
    }
    return watches;
}

qint64 addressLimitIn(const QString& limits)
{
    const QString limit = captured(limits, QStringLiteral("^Max address space\\s+(\\S+)"));
    if (limit == QLatin1String("unlimited")) {
        return 0;
    }
    return limit.isEmpty() ? -1 : limit.toLongLong();
}

} // namespace

DaemonState DaemonState::read(qint64 processId)
{
    constexpr qint64 bytesPerKib = 1024;
    DaemonState state;
    state.processId = processId;
    const QDir process(QStringLiteral("/proc/%1").arg(processId));
    if (processId == 0 || !process.exists()) {
        return state;
    }
    const QString maps = readAll(process.filePath(QStringLiteral("maps")));
    state.version =
        captured(maps, QStringLiteral("/libmoodset-content\\.so\\.(\\d+\\.\\d+\\.\\d+)"));
    state.isOutdated = maps.contains(QRegularExpression(
        QStringLiteral("/(libmoodset-content\\.so\\S*|moodsetd) \\(deleted\\)")));
    state.watches = countWatches(process);
    const QString limits = readAll(process.filePath(QStringLiteral("limits")));
    state.addressLimit = addressLimitIn(limits);
    state.fileLimit = numberIn(limits, QStringLiteral("^Max open files\\s+(\\d+)"));
    const qint64 peak = numberIn(
        readAll(process.filePath(QStringLiteral("status"))), QStringLiteral("^VmPeak:\\s+(\\d+)"));
    state.addressPeak = peak < 0 ? -1 : peak * bytesPerKib;
    return state;
}

int watchLimit()
{
    return int(numberIn(
        readAll(QStringLiteral("/proc/sys/fs/inotify/max_user_watches")),
        QStringLiteral("^(\\d+)")));
}

QString journalFailure(qint64 since)
{
    constexpr int deadlineMs = 3000;
    constexpr qint64 msPerSecond = 1000;
    const QString program = QStandardPaths::findExecutable(QStringLiteral("journalctl"));
    if (program.isEmpty()) {
        return {};
    }
    QProcess journal;
    journal.start(
        program,
        {QStringLiteral("--user"), QStringLiteral("--unit=moodsetd"), QStringLiteral("--quiet"),
         QStringLiteral("--output=cat"), QStringLiteral("--no-pager"),
         QStringLiteral("--since=@%1").arg(since / msPerSecond)});
    if (!journal.waitForFinished(deadlineMs) || journal.exitCode() != 0) {
        return {};
    }
    const QString text = QString::fromUtf8(journal.readAllStandardOutput());
    QString failure;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (line.contains(QLatin1String("Error in")) || line.contains(QLatin1String("ERROR"))
            || line.contains(QLatin1String("Failed to"))
            || line.contains(QLatin1String("Could not"))
            || line.contains(QLatin1String("Invalid URL"))
            || line.contains(QLatin1String("out of memory"))) {
            failure = line.trimmed();
        }
    }
    return failure;
}
