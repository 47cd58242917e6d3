// SPDX-License-Identifier: BSD-3-Clause
#include "action.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <utility>

#include <moodsetnames.h>

namespace Bus = MoodsetNames::Bus;

namespace {

/// The daemon handles one call at a time, and it may be scanning a directory with tens of thousands
/// of files when the call arrives.
constexpr int CallTimeoutMs = 60000;

/// When the bus has started a daemon, the daemon takes its name a moment before it registers its
/// object.
constexpr int StartTimeoutMs = 5000;
constexpr int RetryPauseMs = 50;

/// Some of the changes that a call waits for are not announced, so the library is also read again
/// after this time.
constexpr int LookPauseMs = 200;

bool isStillStarting(QDBusError::ErrorType error)
{
    return error == QDBusError::UnknownObject || error == QDBusError::UnknownInterface
        || error == QDBusError::UnknownMethod;
}

bool isWithoutDaemon(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return true;
    case QDBusError::NoReply:
        // The daemon has ended. A call that takes too long has the same error name.
        return !error.message().contains(QLatin1String("timeout"));
    default:
        return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn."));
    }
}

} // namespace

Action::Action(Plan plan, QObject* parent)
    : QObject(parent)
    , m_plan(std::move(plan))
    , m_thread(LibraryThread::instance())
    , m_events(LibraryEvents::instance())
    , m_startDeadline(StartTimeoutMs)
{
    m_lookAgain.setSingleShot(true);
    m_lookAgain.setInterval(LookPauseMs);
    connect(&m_lookAgain, &QTimer::timeout, this, &Action::judge);
    connect(m_events.get(), &LibraryEvents::contentChanged, this, [this] {
        if (m_isWaiting) {
            judge();
        }
    });
    connect(m_events.get(), &LibraryEvents::daemonEnded, this, [this] {
        if (m_isWaiting) {
            finish({ActionOutcome::NoDaemon, tr("the daemon has ended"), {}, {}});
        }
    });
}

Action::~Action()
{
    if (m_reading) {
        m_reading->cancel();
    }
}

void Action::start()
{
    if (m_plan.prepare) {
        look(m_plan.prepare, &Action::call);
    } else {
        send();
    }
}

void Action::cancel()
{
    finish({ActionOutcome::Cancelled, tr("nobody waits for it any more"), {}, {}});
}

/// Runs `look` on the library's thread, and then `next` with its result on the main thread.
void Action::look(const Look& look, void (Action::*next)(const std::optional<ActionOutcome>&))
{
    m_reading = m_thread->read([this, look, next](const LibraryThread::Work& work) {
        const QString fault = work.open();
        const std::optional<ActionOutcome> outcome =
            fault.isEmpty() ? look() : ActionOutcome{ActionOutcome::NotDone, fault, {}, {}};
        work.deliver([this, outcome, next] {
            m_reading.reset();
            (this->*next)(outcome);
        });
    });
}

void Action::call(const std::optional<ActionOutcome>& before)
{
    if (before && before->error == ActionOutcome::Gone) {
        finish(*before);
        return;
    }
    if (m_plan.noteBefore) {
        // Without a library, there is nothing to note: the daemon makes a library when it starts.
        m_plan.noteBefore(before.value_or(ActionOutcome()));
    }
    send();
}

void Action::send()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(Bus::Service, Bus::Path, Bus::Interface, m_plan.method);
    message.setArguments(m_plan.arguments);
    auto* const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(message, CallTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &Action::handleReply);
}

void Action::handleReply(QDBusPendingCallWatcher* watcher)
{
    watcher->deleteLater();
    if (m_isFinished) {
        return;
    }
    if (!watcher->isError()) {
        m_deadline.setRemainingTime(m_plan.waitMs ? m_plan.waitMs() : 0);
        judge();
        return;
    }
    const QDBusError error = watcher->error();
    if (isStillStarting(error.type()) && !m_startDeadline.hasExpired()) {
        QTimer::singleShot(RetryPauseMs, this, &Action::send);
    } else if (error.type() == QDBusError::Timeout || error.type() == QDBusError::TimedOut) {
        finish({ActionOutcome::TimedOut, tr("the daemon has not answered in time"), {}, {}});
    } else {
        finish(
            {isWithoutDaemon(error) ? ActionOutcome::NoDaemon : ActionOutcome::NotDone,
             error.message(),
             {},
             {}});
    }
}

void Action::judge()
{
    m_lookAgain.stop();
    if (m_isFinished || m_reading) {
        return;
    }
    if (m_plan.judge) {
        look(m_plan.judge, &Action::handleJudgement);
    } else {
        handleJudgement(ActionOutcome());
    }
}

void Action::handleJudgement(const std::optional<ActionOutcome>& outcome)
{
    std::optional<ActionOutcome> confirmed = outcome;
    if (confirmed && confirmed->error == ActionOutcome::NoError && m_plan.confirm) {
        confirmed = m_plan.confirm(*confirmed);
    }
    if (confirmed) {
        finish(*confirmed);
    } else if (m_deadline.hasExpired()) {
        const bool hasWaited = m_plan.waitMs && m_plan.waitMs() > 0;
        finish(
            {hasWaited ? ActionOutcome::TimedOut : ActionOutcome::NotDone,
             hasWaited ? tr("the time limit has passed; the daemon may still be working")
                       : m_plan.failure,
             {},
             {}});
    } else {
        wait();
    }
}

void Action::wait()
{
    m_isWaiting = true;
    m_lookAgain.start(int(std::min<qint64>(LookPauseMs, m_deadline.remainingTime() + 1)));
}

void Action::finish(const ActionOutcome& outcome)
{
    if (m_isFinished) {
        return;
    }
    m_isFinished = true;
    m_isWaiting = false;
    m_lookAgain.stop();
    if (m_reading) {
        m_reading->cancel();
        m_reading.reset();
    }
    Q_EMIT finished(outcome);
    deleteLater();
}
