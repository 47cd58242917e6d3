// SPDX-License-Identifier: BSD-3-Clause
#include "activation.h"

#include "activemoodset.h"
#include "bundle/bundlecheck.h"
#include "daemonprocess.h"
#include "jsonrecord.h"
#include "lookhelper.h"
#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "printabletext.h"
#include "subject.h"
#include "text.h"
#include "theme.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include <sys/stat.h>

namespace {

constexpr unsigned long ActivationPauseMs = 20;

/// The daemon may need this much longer than this program to find out that an address is unusable,
/// in milliseconds.
constexpr int GraceMs = 2000;

/// A request, with the name that the user gave to its subject.
struct Request
{
    const MoodsetService& service;
    QUrl url;
    QString subject;
    bool makeActive;
};

/// A text that changes when the file changes. Each build of wallpapers replaces the application
/// wallpaper by a new file.
QString stateOf(const QString& path)
{
    struct stat state
    {
    };
    return stat(QFile::encodeName(path).constData(), &state) == 0 ? QStringLiteral("%1 %2 %3")
                                                                        .arg(state.st_ino)
                                                                        .arg(state.st_mtim.tv_sec)
                                                                        .arg(state.st_mtim.tv_nsec)
                                                                  : QString();
}

QString bundleFault(const QString& path)
{
    for (const Finding& finding : checkBundleFile(path)) {
        if (finding.severity == Finding::Severity::Error
            || finding.text.startsWith(QLatin1String("images/"))) {
            return finding.text;
        }
    }
    return {};
}

/// The reason why the daemon cannot use a local file, as far as this program can find it.
QString reasonFor(const QUrl& url, qint64 since)
{
    const QString path = url.toLocalFile();
    const QString fault =
        path.endsWith(QLatin1String(".moodset")) ? bundleFault(path) : pictureFault(path);
    return fault.isEmpty() ? journalFailure(since) : fault;
}

Outcome failure(const Request& request, const QUrl& file, qint64 since)
{
    const QString what = request.makeActive ? Text::tr("the daemon has not made it active")
                                            : Text::tr("the daemon has not made a moodset of it");
    const QString reason = reasonFor(file, since);
    return Outcome::failed(about(
        request.subject,
        reason.isEmpty()
            ? Text::tr("%1; its log may give the reason: journalctl --user -u moodsetd").arg(what)
            : Text::tr("%1: %2").arg(what, reason)));
}

Outcome success(const Request& request, const Moodset& moodset)
{
    const QString active = readActiveMoodset();
    const QString name = moodset ? calledName(*moodset) : request.subject;
    QJsonObject result{{QStringLiteral("waited"), true}};
    if (moodset) {
        result.insert(QStringLiteral("moodset"), JsonRecord::wholeMoodset(*moodset, active));
    }
    const QString text = request.makeActive ? Text::tr("%1 is active.").arg(printableText(name))
                                            : Text::tr("%1 has a moodset, number %2.")
                                                  .arg(printableText(name))
                                                  .arg(moodset ? moodset->id : 0);
    return Outcome::done(text + QLatin1Char('\n'), result);
}

/// The moodset that the request has made. A null handle if there is none yet.
Moodset comeAbout(const Request& request, MoodsetLibrary* library)
{
    Moodset moodset = library->moodset(request.url);
    if (!moodset || !request.makeActive) {
        return moodset;
    }
    return readActiveMoodset() == moodset->url.toLocalFile() ? moodset : Moodset();
}

Outcome awaitNetwork(const Request& request, const NetworkWait& wait, qint64 since)
{
    LookHelper probe;
    probe.start(
        {{QStringLiteral("do"), QStringLiteral("probe")},
         {QStringLiteral("url"), QString::fromLatin1(request.url.toEncoded())},
         {QStringLiteral("timeoutMs"), wait.timeoutMs}});
    QDeadlineTimer deadline(wait.timeoutMs);
    MoodsetLibrary library;
    QString fault;
    bool isProbing = true;
    while (!deadline.hasExpired()) {
        const Moodset moodset = comeAbout(request, &library);
        if (moodset) {
            return success(request, moodset);
        }
        if (!request.service.isRunning()) {
            return Outcome::failed(Text::tr("the daemon has ended"));
        }
        if (isProbing && probe.isDone()) {
            isProbing = false;
            fault = addressFault(probe.reply());
            if (!fault.isEmpty() && deadline.remainingTime() > GraceMs) {
                deadline.setRemainingTime(GraceMs);
            }
        }
        QThread::msleep(ActivationPauseMs);
    }
    if (!fault.isEmpty()) {
        const QString log = journalFailure(since);
        return Outcome::failed(about(request.subject, log.isEmpty() ? fault : log));
    }
    return Outcome::failed(
        about(
            request.subject,
            Text::tr("the time limit has passed; the daemon may still be downloading")),
        ExitStatus::TimedOut);
}

QString call(const Request& request)
{
    return request.makeActive ? request.service.setMoodset(request.url)
                              : request.service.createMoodset(request.url);
}

/// The outcome of a request for a local picture, whose path is `file`.
Outcome judgeLocal(
    const Request& request, const QUrl& file, const QString& stateBefore, qint64 since)
{
    MoodsetLibrary library;
    const Moodset moodset = library.moodset(file);
    if (!library.error().isEmpty()) {
        return Outcome::failed(library.error());
    }
    const Theme theme = Theme::read();
    const QString path = file.toLocalFile();
    // If the moodset was active before, only the wallpaper shows that it was applied again.
    const bool isActive = theme.activeMoodset == path
        && (stateBefore.isEmpty() || stateOf(theme.applicationWallpaper) != stateBefore);
    if (request.makeActive ? !isActive : !moodset) {
        return failure(request, file, since);
    }
    return success(request, moodset);
}

Outcome carryOut(const Request& request, const NetworkWait& wait)
{
    const qint64 since = QDateTime::currentMSecsSinceEpoch();
    const Theme before = Theme::read();
    const Moodset known = MoodsetLibrary().moodset(request.url);
    const QUrl file = known ? known->url : request.url;
    const bool wasActive =
        request.makeActive && before.activeMoodset == file.toLocalFile() && file.isLocalFile();
    const QString state = wasActive ? stateOf(before.applicationWallpaper) : QString();
    const QString fault = call(request);
    if (!fault.isEmpty()) {
        return Outcome::failed(about(request.subject, fault));
    }
    if (file.isLocalFile()) {
        return judgeLocal(request, file, state, since);
    }
    if (!wait.isWanted) {
        return Outcome::done(
            Text::tr("The daemon was called. The command did not wait for the result.")
                + QLatin1Char('\n'),
            {{QStringLiteral("waited"), false}});
    }
    return awaitNetwork(request, wait, since);
}

} // namespace

Outcome activate(
    const MoodsetService& service, const QUrl& url, const QString& subject, const NetworkWait& wait)
{
    return carryOut({service, url, subject, true}, wait);
}

Outcome createMoodset(
    const MoodsetService& service, const QUrl& url, const QString& subject, const NetworkWait& wait)
{
    return carryOut({service, url, subject, false}, wait);
}
