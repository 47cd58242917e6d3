// SPDX-License-Identifier: BSD-3-Clause
#include "filewait.h"

#include "moodsetservice.h"
#include "text.h"

#include <QDeadlineTimer>
#include <QThread>

#include <libraryreader.h>

namespace {

constexpr unsigned long FilePauseMs = 10;

} // namespace

Outcome waitForFile(
    const MoodsetService& service, const LibraryReader& library, const QString& path, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    do {
        const std::optional<LibraryFile> file = library.findFile(path);
        if (!file) {
            return Outcome::failed(Text::tr("the daemon has not taken it in"));
        }
        if (file->current) {
            return {};
        }
        if (!service.isRunning()) {
            return Outcome::failed(Text::tr("the daemon has ended"));
        }
        QThread::msleep(FilePauseMs);
    } while (!deadline.hasExpired());
    return Outcome::failed(Text::tr("the daemon has not read it in time"), ExitStatus::TimedOut);
}
