// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"
#include "libraryevents.h"
#include "librarythread.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

/// What has come of an action.
struct ActionOutcome
{
    enum Error : int {
        NoError,
        InvalidArgument, ///< nothing was asked of the daemon
        NoDaemon, ///< the daemon does not run and cannot be started, or has ended
        Gone, ///< the library does not have what was to be changed
        NotDone, ///< the daemon has answered, and what was asked for has not come about
        TimedOut, ///< it has not come about in time, and may still
        Cancelled ///< nobody waits for it any more; it may come about still
    };

    Error error = NoError;
    /// Why it failed, in one line.
    QString text;
    /// The moodset that it is about.
    ContentRow moodset;
    /// What else there is to tell.
    QVariantMap details;
};

/// One call of the daemon, from the look at what there is before it to the look at what has come of
/// it. Nothing of it waits. Main thread only.
class Action : public QObject
{
    Q_OBJECT

public:
    /// A look into the library, on its thread. Nothing tells that what is asked for may still come.
    using Look = std::function<std::optional<ActionOutcome>()>;

    struct Plan
    {
        QString method;
        QVariantList arguments;
        /// Before the call: what fails here is not asked of the daemon. May be empty.
        Look prepare;
        /// Takes what the first look has found; on the main thread. May be empty.
        std::function<void(const ActionOutcome& before)> noteBefore;
        /// After the reply. May be empty; then the reply is all that can be known.
        Look judge;
        /// Completes the outcome by what only the main thread can tell; whether it may still come
        /// if it has not. May be empty.
        std::function<std::optional<ActionOutcome>(const ActionOutcome& outcome)> confirm;
        /// How long to wait after the reply for what may still come; asked after the reply, 0 if it
        /// has come by then or will not.
        std::function<int()> waitMs;
        /// What is told when it has not come by then.
        QString failure;
    };

    Action(Plan plan, QObject* parent);
    ~Action() override;

    void start();
    void cancel();

Q_SIGNALS:
    void finished(const ActionOutcome& outcome);

private:
    void look(const Look& look, void (Action::*next)(const std::optional<ActionOutcome>&));
    void call(const std::optional<ActionOutcome>& before);
    void send();
    void handleReply(class QDBusPendingCallWatcher* watcher);
    void judge();
    void handleJudgement(const std::optional<ActionOutcome>& outcome);
    void wait();
    void finish(const ActionOutcome& outcome);

    Plan m_plan;
    std::shared_ptr<LibraryThread> m_thread;
    std::shared_ptr<LibraryEvents> m_events;
    ReadingPointer m_reading;
    QDeadlineTimer m_startDeadline;
    QDeadlineTimer m_deadline;
    QTimer m_lookAgain;
    bool m_isWaiting = false;
    bool m_isFinished = false;
};
