// SPDX-License-Identifier: BSD-3-Clause
#include "filewait.h"

#include "library.h"
#include "moodsetservice.h"

#include <QDeadlineTimer>
#include <QThread>

namespace {

// Reading a file takes milliseconds, but the daemon may first have others to read.
constexpr int deadlineMs = 60000;
constexpr unsigned long pauseMs = 10;

} // namespace

QString waitForFile(const MoodsetService& service, const Library& library, const QString& path)
{
    const QDeadlineTimer deadline(deadlineMs);
    while (!deadline.hasExpired()) {
        const std::optional<Photo> file = library.findFile(path);
        if (!file) {
            return QStringLiteral("the daemon has not taken it in");
        }
        if (file->current) {
            return {};
        }
        if (!service.isRunning()) {
            return QStringLiteral("the daemon has ended");
        }
        QThread::msleep(pauseMs);
    }
    return QStringLiteral("the daemon has not read it in time");
}
