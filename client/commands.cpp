// SPDX-License-Identifier: BSD-3-Clause
#include "commands.h"

#include "filewait.h"
#include "idlewait.h"
#include "library.h"
#include "moodsetservice.h"
#include "phototable.h"
#include "photowatch.h"
#include "printabletext.h"
#include "progressline.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

namespace {

QTextStream& standardOutput()
{
    static QTextStream stream(stdout);
    return stream;
}

// Turns the event loop until someone ends it, or the daemon ends, which is a failure.
int runWithDaemon(const MoodsetService& service)
{
    QObject::connect(&service, &MoodsetService::ended, &service, [] {
        QCoreApplication::exit(fail(QStringLiteral("the daemon has ended")));
    });
    return QCoreApplication::exec();
}

QUrl pictureUrl(const QString& picture)
{
    if (picture.startsWith(QLatin1String("file:"))) {
        return QUrl(picture);
    }
    return QUrl::fromLocalFile(QFileInfo(picture).absoluteFilePath());
}

// Waits for the data of the picture at path, and returns why there are none.
QString pictureFault(const MoodsetService& service, const Library& library, const QString& path)
{
    std::optional<Photo> photo = library.findFile(path);
    if (photo && !photo->mimeType.startsWith(QLatin1String("image/"))) {
        return QStringLiteral("not a picture, but %1").arg(photo->mimeType);
    }
    QString fault = waitForFile(service, library, path);
    photo = library.findFile(path);
    if (fault.isEmpty() && photo && !photo->isReadable()) {
        fault = QStringLiteral("cannot be read as a picture of type %1").arg(photo->mimeType);
    }
    return fault;
}

} // namespace

int fail(const QString& reason)
{
    QTextStream(stderr) << "moodsetctl: " << printableText(reason) << '\n';
    return EXIT_FAILURE;
}

int failNotRunning()
{
    return fail(QStringLiteral("the daemon is not running"));
}

int showPhotos(const QString& folder, bool watch)
{
    const MoodsetService service;
    Library library;
    if (watch && !service.isRunning()) {
        return failNotRunning();
    }
    if (!library.open()) {
        return fail(library.error());
    }

    const PhotoWatch changes(service, library, folder, standardOutput());
    const QVector<Photo> photos = changes.photos();
    standardOutput() << photoTable(photos, folder) << summaryLine(library.counts(), photos)
                     << Qt::endl;
    if (!library.error().isEmpty()) {
        return fail(library.error());
    }
    return watch ? runWithDaemon(service) : EXIT_SUCCESS;
}

int watchPhotos(const QString& folder)
{
    const MoodsetService service;
    Library library;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    if (!library.open()) {
        return fail(library.error());
    }

    const PhotoWatch changes(service, library, folder, standardOutput());
    return runWithDaemon(service);
}

int waitForIdle(const QString& log, bool progress)
{
    MoodsetService service;
    Library library;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    if (!library.open()) {
        return fail(library.error());
    }
    IdleWait wait(service, library);
    if (!log.isEmpty() && !wait.setLog(log)) {
        return fail(QStringLiteral("cannot read %1").arg(log));
    }

    ProgressLine line;
    if (progress) {
        QObject::connect(&wait, &IdleWait::progress, &wait, [&line](const Library::Counts& counts) {
            line.show(counts);
        });
    }
    QObject::connect(&wait, &IdleWait::idle, &wait, [] { QCoreApplication::exit(); });
    wait.start();
    return runWithDaemon(service);
}

int indexPicture(const QString& picture)
{
    const QUrl url = pictureUrl(picture);
    if (!url.isLocalFile()) {
        return fail(QStringLiteral("%1: not a file URL").arg(picture));
    }
    const QString path = url.toLocalFile();
    if (!QFileInfo::exists(path)) {
        return fail(QStringLiteral("%1: no such file").arg(path));
    }
    const MoodsetService service;
    Library library;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    if (!library.open()) {
        return fail(library.error());
    }

    QString fault = service.indexFile(url);
    if (fault.isEmpty()) {
        fault = pictureFault(service, library, path);
    }
    return fault.isEmpty() ? EXIT_SUCCESS : fail(QStringLiteral("%1: %2").arg(path, fault));
}
