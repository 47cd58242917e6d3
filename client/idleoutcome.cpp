// SPDX-License-Identifier: BSD-3-Clause
#include "idleoutcome.h"

#include "idlewait.h"
#include "jsonrecord.h"
#include "moodsetservice.h"
#include "progressline.h"
#include "text.h"

#include <QEventLoop>
#include <QTimer>

Outcome awaitIdle(
    MoodsetService* service, const LibraryReader& library, const QString& log, int timeoutMs,
    bool showProgress)
{
    IdleWait wait(*service, library);
    if (!log.isEmpty() && !wait.setLog(log)) {
        return Outcome::failed(Text::tr("cannot read %1").arg(log));
    }
    ProgressLine line(showProgress);
    QEventLoop loop;
    Outcome outcome;
    QObject::connect(
        &wait, &IdleWait::progress, &loop, [&line](const LibraryReader::Counts& counts) {
            line.show(Text::tr("Reading: %1 of %2 pictures, %3 folders")
                          .arg(counts.photos - counts.waitingPhotos)
                          .arg(counts.photos)
                          .arg(counts.folders));
        });
    QObject::connect(&wait, &IdleWait::idle, &loop, &QEventLoop::quit);
    QObject::connect(service, &MoodsetService::ended, &loop, [&] {
        // The message about the end of an earlier daemon may arrive late.
        if (service->isRunning()) {
            return;
        }
        outcome = Outcome::failed(Text::tr("the daemon has ended"));
        loop.quit();
    });
    if (timeoutMs > 0) {
        QTimer::singleShot(timeoutMs, &loop, [&] {
            outcome =
                Outcome::failed(Text::tr("the daemon was not idle in time"), ExitStatus::TimedOut);
            loop.quit();
        });
    }
    wait.start();
    loop.exec();
    outcome.result.insert(QStringLiteral("counts"), JsonRecord::counts(library.counts()));
    return outcome;
}
